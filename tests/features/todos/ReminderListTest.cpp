#include "tests/features/todos/ReminderDriver.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr int manyReminders = 10'000;

/// Opens every group and returns their labels.
void expandAll(ReminderDriver &screen)
{
    ReminderListModel &list = *screen.screen->list();
    for (int row = 0; row < list.rowCount(); ++row)
        list.setExpanded(row, true);
}

} // namespace

class ReminderListTest : public QObject
{
    Q_OBJECT

private slots:
    void tickingOneOfManyTouchesNoOtherRow()
    {
        ReminderDriver given;
        given.put(keys::storageKey, *encodeSavedData(RecordGenerator(7).savedData(0, manyReminders, 0)));
        given.startInEnglish();
        given.openScreen();
        given.tester.reset();
        ReminderListModel &list = *given.screen->list();
        const int closedRows = list.rowCount();
        QVERIFY(closedRows < 4000);
        QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
        QSignalSpy removals(&list, &QAbstractItemModel::rowsRemoved);
        QSignalSpy insertions(&list, &QAbstractItemModel::rowsInserted);
        QSignalSpy changes(&list, &QAbstractItemModel::dataChanged);

        given.screen->toggle(5);

        QCOMPARE(resets.size(), 0);
        QCOMPARE(removals.size(), 1);
        QCOMPARE(removals.first().at(1).toInt(), 5);
        QCOMPARE(removals.first().at(2).toInt(), 5);
        // Its new group is closed.
        QCOMPARE(insertions.size(), 0);
        QCOMPARE(list.rowCount(), closedRows - 1);
        // Headers and the ends of the cards.
        QVERIFY(changes.size() <= 10);
    }

    void changesRowByRowEndWhereAFreshScreenBegins()
    {
        RecordGenerator generator(3);
        ReminderDriver given;
        given.open();
        for (int step = 0; step < 300; ++step) {
            const QList<ReminderItem> &reminders = given.store->reminders();
            const auto change = generator.below(4);
            if (reminders.isEmpty() || change < 2) {
                ReminderItem item = generator.reminder();
                // Few weeks, so that groups fill, empty and come back.
                if (item.dueDate)
                    item.dueDate = given.at(9, 12).plus(86400.0 * static_cast<double>(generator.below(25)));
                given.store->addReminder(item);
            } else if (change == 2) {
                given.store->removeReminder(reminders.at(generator.below(reminders.size())).id);
            } else {
                ReminderItem item = reminders.at(generator.below(reminders.size()));
                item.isComplete = !item.isComplete;
                item.completedAt = given.clock.now();
                given.store->updateReminder(item);
            }
            const int row = static_cast<int>(generator.below(given.screen->list()->rowCount()));
            given.screen->list()->setExpanded(row, generator.happens(0.7));
        }
        expandAll(given);
        const QStringList shown = given.shown();
        QVERIFY(shown.size() > 60);

        given.openScreen();
        expandAll(given);
        QCOMPARE(shown, given.shown());
    }

    void clearingEverythingEmptiesTheList()
    {
        ReminderDriver given;
        given.open({{.title = u"a"_s}, {.title = u"b"_s, .dueDate = given.at(9, 9)}});
        given.store->clearPersonalContent();
        QCOMPARE(given.shown(), (QStringList{u". NoDueDate"_s, u"._ DueDates"_s, u"._ Completed"_s}));
    }
};

TESSALY_TEST_MAIN(ReminderListTest)
#include "ReminderListTest.moc"

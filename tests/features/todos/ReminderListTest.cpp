#include "tests/features/todos/ReminderDriver.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr int manyReminders = 10'000;

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
        ReminderListRows &list = *given.screen->rows();
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
        QCOMPARE(changes.size(), 0);
    }

    void editingOneToDoChangesItsRowOnly()
    {
        ReminderDriver given;
        given.open({{.title = u"a"_s}, {.title = u"b"_s}, {.title = u"c"_s}});
        QSignalSpy changes(given.screen->rows(), &QAbstractItemModel::dataChanged);
        QSignalSpy removals(given.screen->rows(), &QAbstractItemModel::rowsRemoved);

        ReminderItem edited = given.store->reminders().at(1);
        edited.title = u"B"_s;
        given.store->updateReminder(edited);

        QCOMPARE(given.shown().mid(1, 3), (QStringList{u"o a"_s, u"o B"_s, u"o c"_s}));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().first().toModelIndex().row(), 2);
        QCOMPARE(removals.size(), 0);
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

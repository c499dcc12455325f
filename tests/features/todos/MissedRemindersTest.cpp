#include "views/todos/MissedReminders.h"
#include "tests/features/todos/ReminderDriver.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// The to-do screen's card of unanswered reminders.
struct MissedDriver : ReminderDriver
{
    std::unique_ptr<MissedReminders> card;

    /// A planner that was closed while the to-dos became due, an hour apart; the last is due at noon.
    void openAfterMissing(int count)
    {
        clock.setNow(at(8, 12));
        startInEnglish();
        for (int row = 0; row < count; ++row) {
            store->addReminder(
                {.title = QString(QChar(u'a' + row)), .dueDate = at(9, 12).plus(3600.0 * (row - count + 1))});
        }
        clock.setNow(at(9, 12).plus(30));
        startInEnglish();
        store->waitingReminders().start();
        notificationPresenter.complete();
        card = std::make_unique<MissedReminders>();
        card->setStore(store.get());
    }
    [[nodiscard]] QStringList rows() const
    {
        QStringList lines;
        for (const MissedReminderRow &row : card->rows()->rows())
            lines.append((row.title + u' ' + row.dueText).simplified()); // no narrow spaces
        return lines;
    }
};

} // namespace

class MissedRemindersTest : public QObject
{
    Q_OBJECT

private slots:
    void itListsWhatIsUnansweredUntilItIsAnswered()
    {
        MissedDriver given;
        given.openAfterMissing(3);
        QCOMPARE(given.rows(), (QStringList{u"a Sep 9, 10:00 AM"_s, u"b Sep 9, 11:00 AM"_s, u"c Sep 9, 12:00 PM"_s}));
        QVERIFY(given.card->wasClosed());

        QCOMPARE(given.card->remindTomorrow(1), 1);
        QCOMPARE(given.rows(), (QStringList{u"a Sep 9, 10:00 AM"_s, u"c Sep 9, 12:00 PM"_s}));
        QCOMPARE(given.card->complete(1), 0);
        QVERIFY(given.store->reminders().at(2).isComplete);
        QCOMPARE(given.card->remindInTenMinutes(0), -1);
        QCOMPARE(given.card->count(), 0);

        // Put off, a reminder comes back with the due date of its to-do, and not as one of a closed planner.
        given.clock.advance(660);
        QCOMPARE(given.rows(), QStringList{u"a Sep 9, 10:00 AM"_s});
        QVERIFY(!given.card->wasClosed());
    }

    void beyondFiveItSaysHowManyMoreThereAre()
    {
        MissedDriver given;
        given.openAfterMissing(8);
        QCOMPARE(given.rows().size(), 5);
        QCOMPARE(given.card->hiddenCount(), 3);

        QCOMPARE(given.card->remindInOneHour(0), 0);
        QVERIFY(given.rows().first().startsWith(u"b "));
        QCOMPARE(given.rows().size(), 5);

        given.card->showAll();
        QCOMPARE(given.rows().size(), 7);
        QCOMPARE(given.card->hiddenCount(), 0);
    }

    void dismissingAllIsOneStep()
    {
        MissedDriver given;
        given.openAfterMissing(7);

        given.card->dismissAll();

        QCOMPARE(given.card->count(), 0);
        QVERIFY(!given.store->reminders().first().isComplete);
        given.store->undo();
        QCOMPARE(given.card->count(), 7);
    }

    void theTitleIsThatOfTheToDoNow()
    {
        MissedDriver given;
        given.openAfterMissing(1);
        ReminderItem item = given.store->reminders().first();
        item.title = u"other"_s;
        given.store->updateReminder(item);
        QCOMPARE(given.rows(), QStringList{u"other Sep 9, 12:00 PM"_s});

        given.store->removeReminder(item.id);
        QCOMPARE(given.rows(), QStringList{u"a Sep 9, 12:00 PM"_s});
    }
};

TESSALY_TEST_MAIN(MissedRemindersTest)
#include "MissedRemindersTest.moc"

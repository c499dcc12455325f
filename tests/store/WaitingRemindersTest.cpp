#include "model/Uuid.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A planner process in September 2026 that can end and start again over the same preferences and desktop.
struct Process : StoreUnderTest
{
    Process()
    {
        clock.setNow(at(9, 12, 0, 30));
        restart();
    }
    void restart()
    {
        startInEnglish();
        store->waitingReminders().start();
    }
    void end() { store.reset(); }

    [[nodiscard]] Instant at(int day, int hour, int minute, int second = 0) const
    {
        return calendar.instant(QDate(2026, 9, day), QTime(hour, minute, second));
    }
    ReminderItem add(const QString &title, Instant due) const
    {
        ReminderItem item{.title = title, .dueDate = due};
        store->addReminder(item);
        return item;
    }
    void tick(ReminderItem item, bool isComplete = true) const
    {
        item.isComplete = isComplete;
        store->updateReminder(item);
    }

    [[nodiscard]] QStringList shown() const
    {
        QStringList titles;
        for (const Notification &notification : notificationPresenter.shown())
            titles.append(notification.body);
        return titles;
    }
    /// The titles that a start would find.
    [[nodiscard]] QStringList stored() const
    {
        QStringList titles;
        const auto json = preferences.get<QByteArray>(keys::waitingReminders);
        const auto reminders = decodeWaitingReminders(json.value_or("[]"));
        for (const WaitingReminder &reminder : *reminders)
            titles.append(reminder.body);
        return titles;
    }
};

} // namespace

class WaitingRemindersTest : public QObject
{
    Q_OBJECT

private slots:
    void aReminderComesAtTheStartOfItsMinuteOnce()
    {
        Process process;
        const qsizetype otherAlarms = process.clock.pendingAlarms();
        process.add(u"later"_s, process.at(9, 12, 45, 20));
        const ReminderItem soon = process.add(u"soon"_s, process.at(9, 12, 31));

        process.clock.advance(30 * 60 + 29);
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(1);
        QCOMPARE(process.notificationPresenter.shown(),
                 (QList<Notification>{{uuidText(soon.id), u"Reminder"_s, u"soon"_s}}));
        process.notificationPresenter.complete();

        process.clock.advance(86400);
        QCOMPARE(process.shown(), (QStringList{u"soon"_s, u"later"_s}));
        QCOMPARE(process.clock.pendingAlarms(), otherAlarms);
    }

    void tickingTakesItAwayOpeningBringsItBackDeletingLeavesIt()
    {
        Process process;
        const ReminderItem a = process.add(u"a"_s, process.at(9, 13, 0));
        const ReminderItem b = process.add(u"b"_s, process.at(9, 14, 0));
        process.tick(a);
        QCOMPARE(process.stored(), QStringList{u"b"_s});
        process.tick(a, false);
        process.store->removeReminder(b.id);
        QCOMPARE(process.stored(), (QStringList{u"b"_s, u"a"_s}));

        process.restart();
        process.clock.advance(3 * 3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
        process.tick(a);
        process.tick(a, false);
        process.clock.advance(86400);
        QCOMPARE(process.shown().size(), 2);
    }

    void aClockThatIsSetForwardBringsWhatIsDueAndSetBackBringsNothingTwice()
    {
        Process process;
        process.add(u"a"_s, process.at(9, 13, 0));
        process.add(u"b"_s, process.at(12, 18, 0));

        process.clock.setNow(process.at(12, 17, 0));
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.clock.setNow(process.at(9, 12, 0));
        process.clock.advance(2 * 3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.clock.setNow(process.at(12, 18, 0));
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
    }

    void aMinuteIsThatOfThePlaceWhereTheUserIs()
    {
        Process process;
        process.add(u"a"_s, process.at(9, 14, 0));
        process.add(u"b"_s, process.at(9, 18, 0));

        process.clock.setZone(QTimeZone("Europe/London"));
        process.clock.setNow(process.at(9, 14, 30));
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(1800);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.clock.setZone(QTimeZone("Asia/Tokyo"));
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
    }

    void whatFellDueWhileThePlannerWasNotRunningComesAtTheNextStart_data()
    {
        QTest::addColumn<double>("restart");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("stored");

        const Process planner;
        QTest::newRow("before it is due") << planner.at(10, 8, 59).seconds << QStringList{} << QStringList{u"a"_s};
        QTest::newRow("just after") << planner.at(10, 9, 1).seconds << QStringList{u"a"_s} << QStringList{};
        QTest::newRow("within a day") << planner.at(11, 8, 59).seconds << QStringList{u"a"_s} << QStringList{};
        QTest::newRow("more than a day later") << planner.at(11, 9, 1).seconds << QStringList{} << QStringList{};
    }

    void whatFellDueWhileThePlannerWasNotRunningComesAtTheNextStart()
    {
        QFETCH(const double, restart);
        Process process;
        process.add(u"a"_s, process.at(10, 9, 0));
        process.end();
        process.clock.setNow(Instant{restart});
        QVERIFY(process.shown().isEmpty());

        process.restart();
        QTEST(process.shown(), "shown");
        QTEST(process.stored(), "stored");

        // Neither a further start nor a kill before the desktop answered brings it again.
        process.restart();
        QTEST(process.shown(), "shown");
    }

    void withNobodyToShowThemRemindersWaitAndNothingIsWritten()
    {
        Process process;
        process.add(u"a"_s, process.at(9, 12, 1));
        process.add(u"b"_s, process.at(9, 12, 2));
        process.notificationPresenter.setUnavailable();
        process.clock.advance(30);
        process.notificationPresenter.complete();
        process.clock.advance(60);
        process.notificationPresenter.complete();
        const int writes = process.preferences.writeCount();

        process.clock.advance(7200);
        process.notificationPresenter.complete();

        QCOMPARE(process.preferences.writeCount(), writes);
        QCOMPARE(process.stored(), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(process.shown().isEmpty());
        process.notificationPresenter.appear();
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(process.stored(), QStringList{});
    }

    void whoeverShowsOneReminderIsAskedForTheOthersToo()
    {
        Process process;
        process.add(u"a"_s, process.at(9, 12, 1));
        process.notificationPresenter.setUnavailable();
        process.clock.advance(30);
        process.notificationPresenter.complete();
        // The desktop comes back without announcing itself.
        process.notificationPresenter.recover();
        process.add(u"b"_s, process.at(9, 12, 5));
        process.clock.advance(240);
        QCOMPARE(process.shown(), (QStringList{u"b"_s}));

        process.notificationPresenter.complete();

        QCOMPARE(process.shown(), (QStringList{u"b"_s, u"a"_s}));
    }

    void aToDoThatWasTickedWhileTheDesktopWasAskedDoesNotComeBack()
    {
        Process process;
        process.notificationPresenter.setUnavailable();
        const ReminderItem a = process.add(u"a"_s, process.at(9, 12, 1));
        process.clock.advance(30);
        process.tick(a);
        process.notificationPresenter.complete();

        QCOMPARE(process.stored(), QStringList{});
        process.notificationPresenter.appear();
        QVERIFY(process.shown().isEmpty());
    }

    void whatCouldNotBeSavedIsSavedWithItsToDo()
    {
        Process process;
        process.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
        process.add(u"a"_s, process.at(9, 13, 0));
        QVERIFY(process.store->hasUnsavedChanges());

        process.preferences.failWritesWith(std::nullopt);
        process.store->retryUnsavedChanges();

        QVERIFY(!process.store->hasUnsavedChanges());
        process.restart();
        QCOMPARE(process.store->reminders().size(), 1);
        QCOMPARE(process.stored(), QStringList{u"a"_s});
    }

    void withoutWritablePreferencesRemindersStillComeWhileThePlannerRuns()
    {
        Process process;
        process.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
        process.add(u"a"_s, process.at(9, 13, 0));
        process.clock.advance(3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void theProgramStartsAtLoginExactlyWhileRemindersWait()
    {
        Process process;
        QVERIFY(!process.reminderLoginItem.isEnabled());
        const ReminderItem a = process.add(u"a"_s, process.at(9, 13, 0));
        QVERIFY(process.reminderLoginItem.isEnabled());
        process.tick(a);
        QVERIFY(!process.reminderLoginItem.isEnabled());

        process.tick(a, false);
        process.end();
        (void)process.reminderLoginItem.setEnabled(false);
        process.restart();
        QVERIFY(process.reminderLoginItem.isEnabled());
        process.clock.advance(3600);
        QVERIFY(!process.reminderLoginItem.isEnabled());
        QVERIFY2(!process.store->launchAtLogin(), "the user's choice is another matter");

        process.reminderLoginItem.failWith(Error{ErrorCode::LoginItemFailed, u"no rights"_s});
        process.add(u"b"_s, process.at(9, 18, 0));
        QVERIFY(process.message().startsWith(u"Reminders may not survive a log-out: "));
    }

    void thatTheProgramStaysIsSaidOnce()
    {
        Process process;
        process.notificationPresenter.setUnavailable();
        process.store->reportResidence();
        process.notificationPresenter.complete();
        process.notificationPresenter.recover();

        for (int closing = 0; closing < 3; ++closing) {
            process.store->reportResidence();
            process.notificationPresenter.complete();
            process.restart();
        }

        QCOMPARE(process.shown(),
                 QStringList{u"Tessaly keeps running without its window so that it can show your reminders."_s});
    }
};

TESSALY_TEST_MAIN(WaitingRemindersTest)
#include "WaitingRemindersTest.moc"

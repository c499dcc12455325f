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
    [[nodiscard]] QStringList onDesktop() const
    {
        QStringList bodies;
        for (const Notification &notification : notificationPresenter.onDesktop())
            bodies.append(notification.body);
        return bodies;
    }
    /// What a start would find: the titles, before those that do not wait their state.
    [[nodiscard]] QStringList stored() const
    {
        static const QMap<ReminderState, QString> marks{{ReminderState::Waiting, {}},
                                                        {ReminderState::Due, u"due "_s},
                                                        {ReminderState::Shown, u"shown "_s},
                                                        {ReminderState::Missed, u"missed "_s}};
        QStringList lines;
        const auto json = preferences.get<QByteArray>(keys::waitingReminders);
        const auto reminders = decodeWaitingReminders(json.value_or("[]"));
        for (const WaitingReminder &reminder : *reminders)
            lines.append(marks.value(reminder.state) + reminder.body);
        return lines;
    }
    void press(const ReminderItem &item, const QString &key) { notificationPresenter.press(uuidText(item.id), key); }
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
        const Notification notification = process.notificationPresenter.shown().value(0);
        QCOMPARE(notification.identifier, uuidText(soon.id));
        QCOMPARE(notification.title, u"Reminder"_s);
        QCOMPARE(notification.body, u"soon"_s);
        QVERIFY(notification.isLasting);
        QCOMPARE(process.stored(), (QStringList{u"later"_s, u"due soon"_s}));
        process.notificationPresenter.complete();
        QCOMPARE(process.stored(), (QStringList{u"later"_s, u"shown soon"_s}));

        process.clock.advance(86400);
        QCOMPARE(process.shown(), (QStringList{u"soon"_s, u"later"_s}));
        QCOMPARE(process.clock.pendingAlarms(), otherAlarms);
    }

    void tenThousandWaitOnOneAlarm()
    {
        Process process;
        const qsizetype otherAlarms = process.clock.pendingAlarms();
        QList<WaitingReminder> many;
        for (int row = 0; row < 10'000; ++row) {
            const QString name = QString::number(row);
            many.append({name, u"Reminder"_s, name, QDate(2026, 9, 10).addDays(row % 500), QTime(row % 24, 0)});
        }
        process.put(keys::waitingReminders, encodeWaitingReminders(many));

        process.restart();
        QCOMPARE(process.clock.pendingAlarms(), otherAlarms + 1);
        const int writes = process.preferences.writeCount();
        process.clock.advance(11 * 3600);
        QCOMPARE(process.preferences.writeCount(), writes);
        QVERIFY(process.shown().isEmpty());
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
        const QStringList waiting{u"a"_s, u"b"_s};
        QTest::newRow("before any is due") << planner.at(10, 8, 59).seconds << QStringList{} << waiting;
        QTest::newRow("after one") << planner.at(10, 9, 1).seconds << QStringList{u"a"_s}
                                   << QStringList{u"missed a"_s, u"b"_s};
        const QStringList together{u"2 reminders were missed\na, b"_s};
        const QStringList missed{u"missed a"_s, u"missed b"_s};
        QTest::newRow("after both") << planner.at(10, 10, 30).seconds << together << missed;
        QTest::newRow("years later") << planner.at(10, 10, 30).plus(9e7).seconds << together << missed;
    }

    void whatFellDueWhileThePlannerWasNotRunningComesAtTheNextStart()
    {
        QFETCH(const double, restart);
        Process process;
        process.add(u"a"_s, process.at(10, 9, 0));
        process.add(u"b"_s, process.at(10, 10, 0));
        process.end();
        process.clock.setNow(Instant{restart});
        QVERIFY(process.shown().isEmpty());

        process.restart();
        process.notificationPresenter.complete();
        QTEST(process.shown(), "shown");
        QTEST(process.stored(), "stored");

        process.restart();
        process.notificationPresenter.complete();
        QTEST(process.shown(), "shown");
    }

    void aPlannerThatIsKilledBeforeTheDesktopAnsweredReportsTheReminderAtTheNextStart()
    {
        Process process;
        process.add(u"a"_s, process.at(9, 12, 1));
        process.clock.advance(30);
        QCOMPARE(process.stored(), QStringList{u"due a"_s});

        process.restart();
        process.notificationPresenter.complete();

        QCOMPARE(process.stored(), QStringList{u"missed a"_s});
        process.restart();
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"a"_s}));
    }

    void whatFellDueWhileTheMachineSleptComesTogether()
    {
        Process process;
        const ReminderItem a = process.add(u"a"_s, process.at(9, 13, 0));
        const ReminderItem b = process.add(u"b"_s, process.at(9, 14, 0));
        process.add(u"c"_s, process.at(9, 15, 0));
        process.add(u"d"_s, process.at(9, 16, 0));

        process.clock.setNow(process.at(9, 15, 0, 10));
        process.notificationPresenter.complete();
        QCOMPARE(process.onDesktop(), (QStringList{u"2 reminders were missed\na, b"_s, u"c"_s}));
        QCOMPARE(process.stored(), (QStringList{u"shown a"_s, u"shown b"_s, u"shown c"_s, u"d"_s}));

        process.tick(a);
        QCOMPARE(process.onDesktop().size(), 2);
        process.tick(b);
        QCOMPARE(process.onDesktop(), QStringList{u"c"_s});
    }

    void anAnswerToANotificationIsOneStep_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<double>("nextComes");

        const Process planner;
        QTest::newRow("done") << u"done"_s << true << QStringList{} << 0.0;
        QTest::newRow("ten minutes") << u"in-10-minutes"_s << false << QStringList{u"a"_s}
                                     << planner.at(9, 12, 11).seconds;
        QTest::newRow("one hour") << u"in-1-hour"_s << false << QStringList{u"a"_s} << planner.at(9, 13, 1).seconds;
        QTest::newRow("tomorrow") << u"tomorrow"_s << false << QStringList{u"a"_s} << planner.at(10, 9, 0).seconds;
        QTest::newRow("another button") << u"reply"_s << false << QStringList{u"shown a"_s} << 0.0;
    }

    void anAnswerToANotificationIsOneStep()
    {
        QFETCH(const QString, key);
        QFETCH(const double, nextComes);
        Process process;
        const ReminderItem a = process.add(u"a"_s, process.at(9, 12, 1));
        process.clock.advance(30);
        process.notificationPresenter.complete();

        process.press(a, key);

        QTEST(process.store->reminders().first().isComplete, "isComplete");
        QCOMPARE(process.store->reminders().first().dueDate, a.dueDate);
        QTEST(process.stored(), "stored");
        if (key == u"reply")
            return;
        QVERIFY(process.onDesktop().isEmpty());
        process.store->undo();
        QCOMPARE(process.store->reminders().first(), a);
        QCOMPARE(process.stored(), QStringList{u"shown a"_s});
        process.store->redo();
        QTEST(process.stored(), "stored");
        if (nextComes > 0) {
            process.clock.setNow(Instant{nextComes}.plus(-1));
            QCOMPARE(process.shown().size(), 1);
            process.clock.advance(1);
            QCOMPARE(process.shown().size(), 2);
        }
    }

    void aNotificationsWordsAreThoseOfTheToDoNow()
    {
        Process process;
        ReminderItem a = process.add(u"a"_s, process.at(9, 12, 1));
        a.title = u"other"_s;
        a.requirement = u" first line \nsecond"_s;
        process.store->updateReminder(a);
        process.clock.advance(30);

        const Notification notification = process.notificationPresenter.shown().value(0);
        QCOMPARE(notification.body, u"other\nfirst line"_s);
        QStringList labels;
        for (const NotificationAction &action : notification.actions)
            labels.append(action.label);
        QCOMPARE(labels, (QStringList{u"Done"_s, u"In 10 minutes"_s, u"In 1 hour"_s, u"Tomorrow"_s}));
    }

    void whatIsPutOffAgainAfterItsNewMinuteStaysUnanswered()
    {
        Process process;
        const ReminderItem a = process.add(u"a"_s, process.at(9, 12, 1));
        process.clock.advance(30);
        process.notificationPresenter.complete();
        process.press(a, u"in-10-minutes"_s);
        process.store->undo();

        process.clock.advance(3600);
        process.store->redo();

        QCOMPARE(process.stored(), QStringList{u"shown a"_s});
    }

    void theReminderOfADeletedToDoCanBeAnswered()
    {
        Process process;
        const ReminderItem a = process.add(u"a"_s, process.at(9, 12, 1));
        process.store->removeReminder(a.id);
        process.clock.advance(30);
        process.notificationPresenter.complete();
        QCOMPARE(process.onDesktop(), QStringList{u"a"_s});

        process.press(a, u"done"_s);

        QVERIFY(process.stored().isEmpty() && process.onDesktop().isEmpty());
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
        QCOMPARE(process.stored(), (QStringList{u"due a"_s, u"due b"_s}));
        QVERIFY(process.shown().isEmpty());
        process.notificationPresenter.appear();
        process.notificationPresenter.complete();
        QCOMPARE(process.shown(), QStringList{u"2 reminders were missed\na, b"_s});
        QCOMPARE(process.stored(), (QStringList{u"shown a"_s, u"shown b"_s}));
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
        process.notificationPresenter.complete();
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

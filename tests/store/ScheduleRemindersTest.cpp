#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A planner in September 2026, whose own schedules remind ten minutes before they start.
struct Planner : StoreUnderTest
{
    Planner()
    {
        clock.setNow(at(9, 12, 0));
        restart();
        store->scheduleReminders().setLeadMinutes({}, 10);
    }
    void restart()
    {
        startInEnglish();
        store->waitingReminders().start();
        notificationPresenter.complete();
    }
    [[nodiscard]] Instant at(int day, int hour, int minute) const
    {
        return calendar.instant(QDate(2026, 9, day), QTime(hour, minute));
    }
    ScheduleItem add(const QString &title, Instant start, std::optional<double> lead = {}) const
    {
        const ScheduleItem item{.title = title, .date = start, .leadMinutes = lead};
        store->addSchedule(item);
        return item;
    }
    void pass(Instant until)
    {
        clock.advance(until.seconds - clock.now().seconds);
        notificationPresenter.complete();
    }
    /// The first lines of all that was ever shown.
    [[nodiscard]] QStringList shown() const
    {
        QStringList titles;
        for (const Notification &notification : notificationPresenter.shown())
            titles.append(notification.body.section(u'\n', 0, 0));
        return titles;
    }
};

} // namespace

class ScheduleRemindersTest : public QObject
{
    Q_OBJECT

private slots:
    void aScheduleRemindsAheadOfItsStartOnce()
    {
        Planner planner;
        planner.add(u"talk"_s, planner.at(9, 14, 0));
        planner.add(u"lunch"_s, planner.at(9, 13, 0), 30);
        planner.add(u"quiet"_s, planner.at(9, 13, 30), -1);
        QVERIFY(planner.reminderLoginItem.isEnabled());

        planner.pass(planner.at(9, 13, 49));
        QCOMPARE(planner.shown(), QStringList{u"lunch"_s});
        planner.pass(planner.at(9, 13, 50));
        const Notification notification = planner.notificationPresenter.shown().last();
        QCOMPARE(notification.title, u"Schedule reminder"_s);
        QCOMPARE(notification.body, u"talk\n"_s + planner.store->dateText(planner.at(9, 14, 0), false));
        planner.restart();
        planner.pass(planner.at(10, 12, 0));
        QCOMPARE(planner.shown().size(), 2);
        QVERIFY(!planner.reminderLoginItem.isEnabled());
    }

    void oneIsGivenOnlyWhileItsScheduleIsToCome_data()
    {
        QTest::addColumn<int>("startMinute");
        QTest::addColumn<QStringList>("shown");

        QTest::newRow("had begun") << -1 << QStringList{};
        QTest::newRow("within the lead time") << 3 << QStringList{u"talk"_s};
        QTest::newRow("later") << 15 << QStringList{u"talk"_s};
    }

    void oneIsGivenOnlyWhileItsScheduleIsToCome()
    {
        QFETCH(const int, startMinute);
        Planner planner;
        planner.pass(planner.at(9, 13, 0));
        planner.add(u"talk"_s, planner.at(9, 13, 0).plus(startMinute * 60));
        planner.pass(planner.at(9, 14, 0));
        QTEST(planner.shown(), "shown");
        planner.restart();
        QTEST(planner.shown(), "shown");
    }

    void itFollowsItsSchedule_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("shown");

        QTest::newRow("moved") << 0 << QStringList{u"13:50"_s, u"14:50"_s};
        QTest::newRow("moved and back") << 1 << QStringList{u"13:50"_s};
        QTest::newRow("moved before it was due") << 2 << QStringList{u"14:50"_s};
        QTest::newRow("deleted") << 3 << QStringList{};
        QTest::newRow("deleted and undone") << 4 << QStringList{u"13:50"_s};
        QTest::newRow("taken away by a sync") << 5 << QStringList{};
    }

    void itFollowsItsSchedule()
    {
        QFETCH(const int, kind);
        Planner planner;
        ScheduleItem item = planner.add(u"talk"_s, planner.at(9, 14, 0));
        QStringList shown;
        const auto passTo = [&](int hour, int minute) {
            const qsizetype before = planner.shown().size();
            planner.pass(planner.at(9, hour, minute));
            if (planner.shown().size() > before)
                shown.append(QTime(hour, minute).toString(u"HH:mm"_s));
        };
        if (kind <= 1)
            passTo(13, 50);
        item.date = planner.at(9, 15, 0);
        if (kind <= 2)
            planner.store->updateSchedule(item);
        else if (kind <= 4)
            planner.store->deleteSchedule(item);
        else
            planner.store->editSchedules([](QList<ScheduleItem> &list) {
                list.clear();
                return std::optional(RowsChange());
            });
        if (kind <= 1)
            QVERIFY2(planner.notificationPresenter.onDesktop().isEmpty(), "at the old time");
        if (kind == 1 || kind == 4)
            planner.store->undo();
        passTo(13, 50);
        passTo(14, 50);
        passTo(18, 0);
        QTEST(shown, "shown");
    }

    void whatWasMissedComesAtTheNextStart()
    {
        Planner planner;
        planner.add(u"talk"_s, planner.at(9, 14, 0));
        planner.add(u"supper"_s, planner.at(9, 19, 0));
        planner.store.reset();
        planner.clock.setNow(planner.at(11, 8, 0));

        planner.restart();
        QCOMPARE(planner.shown(), QStringList{u"2 reminders were missed"_s});
        planner.restart();
        QCOMPARE(planner.shown().size(), 1);
    }

    void aClockThatIsSetBackAndForthBringsNothingTwice()
    {
        Planner planner;
        planner.add(u"talk"_s, planner.at(9, 14, 0));
        planner.pass(planner.at(9, 13, 55));
        planner.clock.setNow(planner.at(8, 12, 0));
        planner.notificationPresenter.complete();
        planner.add(u"early"_s, planner.at(8, 13, 0));
        planner.pass(planner.at(9, 15, 0));

        QCOMPARE(planner.shown(), (QStringList{u"talk"_s, u"early"_s}));
    }

    void eachCalendarHasItsOwnLeadTime()
    {
        Planner planner;
        const auto add = [&](const QString &title, const std::optional<QString> &calendar) {
            planner.store->addSchedule({.title = title, .date = planner.at(9, 14, 0), .calendarIdentifier = calendar});
        };
        add(u"own"_s, std::nullopt);
        add(u"work"_s, u"work"_s);
        add(u"other"_s, u"other"_s);
        planner.store->scheduleReminders().setLeadMinutes(u"work"_s, 60);
        planner.restart();

        planner.pass(planner.at(9, 13, 0));
        QCOMPARE(planner.shown(), QStringList{u"work"_s});
        planner.pass(planner.at(9, 13, 50));
        QCOMPARE(planner.shown(), (QStringList{u"work"_s, u"own"_s}));

        planner.store->scheduleReminders().setLeadMinutes({}, std::nullopt);
        planner.store->scheduleReminders().setLeadMinutes(u"work"_s, std::nullopt);
        QVERIFY(!planner.store->waitingReminders().hasPending());
        planner.pass(planner.at(9, 18, 0));
        QCOMPARE(planner.shown().size(), 2);
    }

    void restoredLeadTimesAreInForceAtOnce()
    {
        Planner planner;
        planner.add(u"talk"_s, planner.at(9, 14, 0));
        const StateChange restoring{
            .settings = {{keys::leadMinutes, {.before = QStringList{u"10 "_s}, .after = QStringList{u"30 "_s}}}}};

        planner.store->perform(restoring, TextPair{u"恢复"_s, u"Restore"_s});
        QCOMPARE(planner.store->scheduleReminders().leadMinutes({}), 30);
        planner.pass(planner.at(9, 13, 30));
        QCOMPARE(planner.shown(), QStringList{u"talk"_s});
        planner.store->undo();
        QCOMPARE(planner.store->scheduleReminders().leadMinutes({}), 10);
    }

    void aReminderCanBePutOffAndAnswered()
    {
        Planner planner;
        const ScheduleItem item = planner.add(u"talk"_s, planner.at(9, 14, 0));
        planner.pass(planner.at(9, 13, 50));
        const QString identifier = ScheduleReminders::identifier(item);

        planner.store->answerReminders({identifier}, ReminderAnswer::InTenMinutes);
        planner.pass(planner.at(9, 14, 0));
        QCOMPARE(planner.shown().size(), 2);
        planner.notificationPresenter.press(identifier, u"done"_s);

        QVERIFY(planner.store->waitingReminders().list().isEmpty());
        planner.pass(planner.at(9, 18, 0));
        QCOMPARE(planner.shown().size(), 2);
    }

    void withoutLeadTimesNothingIsWrittenAndNoAlarmIsSet()
    {
        StoreUnderTest planner;
        planner.startInEnglish().waitingReminders().start();
        const qsizetype alarms = planner.clock.pendingAlarms();

        planner.store->addSchedule(scheduleTitled(u"talk"_s, planner.clock.now().plus(7200).seconds));

        QCOMPARE(planner.clock.pendingAlarms(), alarms);
        QVERIFY(!planner.preferences.get<QByteArray>(keys::givenReminders));
    }
};

TESSALY_TEST_MAIN(ScheduleRemindersTest)
#include "ScheduleRemindersTest.moc"

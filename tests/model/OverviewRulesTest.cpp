#include "model/OverviewRules.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const UserCalendar &vienna()
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    return calendar;
}

Instant at(int day, int hour, int minute = 0)
{
    return vienna().instant(QDate(2026, 9, day), QTime(hour, minute));
}

} // namespace

class OverviewRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void aScheduleOfTodayCountsUntilItsEnd_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::addColumn<bool>("counts");
        const double none = 0;

        QTest::newRow("later today") << at(9, 15).seconds << at(9, 16).seconds << true;
        QTest::newRow("started and not ended") << at(9, 11).seconds << at(9, 13).seconds << true;
        QTest::newRow("ends this very second") << at(9, 11).seconds << at(9, 12).seconds << true;
        QTest::newRow("ended") << at(9, 10).seconds << at(9, 11, 59).seconds << false;
        QTest::newRow("no end, starts now") << at(9, 12).seconds << none << true;
        QTest::newRow("no end, started") << at(9, 11, 59).seconds << none << false;
        QTest::newRow("began yesterday and still runs") << at(8, 23).seconds << at(9, 14).seconds << false;
        QTest::newRow("midnight belongs to today") << at(9, 0).seconds << at(9, 14).seconds << true;
        QTest::newRow("tomorrow's midnight does not") << at(10, 0).seconds << at(10, 1).seconds << false;
    }

    void aScheduleOfTodayCountsUntilItsEnd()
    {
        QFETCH(const double, start);
        QFETCH(const double, end);
        ScheduleItem schedule{.date = Instant{start}};
        if (end != 0)
            schedule.endDate = Instant{end};

        QTEST(!remainingDay({schedule}, vienna(), at(9, 12)).upcoming.isEmpty(), "counts");
    }

    void todayMixesSchedulesWithTheToDosOfTheDay()
    {
        using Kind = TodayEntry::Kind;
        const QList<ScheduleItem> schedules{{.date = at(9, 18), .endDate = at(9, 19)},
                                            {.date = at(9, 11), .endDate = at(9, 17)},
                                            {.date = at(9, 8), .endDate = at(9, 9)}};
        const QList<ReminderItem> reminders{{.dueDate = at(9, 18)},
                                            {.dueDate = at(9, 9)},
                                            {.dueDate = at(8, 23)},
                                            {.dueDate = at(10, 0)},
                                            {.dueDate = at(9, 13), .isComplete = true},
                                            {}};
        const Instant now = at(9, 12);
        const auto entries = [&](qsizetype most) {
            return todayEntries(remainingDay(schedules, vienna(), now), schedules, reminders, vienna(), now, most);
        };

        QCOMPARE(entries(9), (QList<TodayEntry>{{Kind::ToDo, 1, at(9, 9)},
                                                {Kind::Schedule, 1, at(9, 11)},
                                                {Kind::Schedule, 0, at(9, 18)},
                                                {Kind::ToDo, 0, at(9, 18)}}));
        QCOMPARE(entries(2).size(), 2);
    }

    void whatRemainsIsInOrderAndHoldsUntilTheFirstEnd()
    {
        const QList<ScheduleItem> schedules{{.date = at(9, 18), .endDate = at(9, 19)},
                                            {.date = at(9, 11), .endDate = at(9, 17)},
                                            {.date = at(9, 18), .endDate = at(9, 20)},
                                            {.date = at(9, 8), .endDate = at(9, 9)}};

        const RemainingDay noon = remainingDay(schedules, vienna(), at(9, 12));
        QCOMPARE(noon.upcoming, (QList<qsizetype>{1, 0, 2}));
        QVERIFY(noon.validUntil > at(9, 17) && noon.validUntil < at(9, 17, 1));
        QCOMPARE(remainingDay(schedules, vienna(), noon.validUntil).upcoming, (QList<qsizetype>{0, 2}));

        // Nothing left: the next change is the next day.
        QCOMPARE(remainingDay(schedules, vienna(), at(9, 21)), (RemainingDay{{}, at(10, 0)}));
    }

    void theFiguresCountWhatIsOpen()
    {
        const Goal full{.subgoals = QList<Subgoal>{{.tasks = QList<GoalTask>{{.isComplete = true}}}}};
        QCOMPARE(activeGoalCount({{}, {.isComplete = true}, full, {.progress = 0.99}}), 2);
    }
};

TESSALY_TEST_MAIN(OverviewRulesTest)
#include "OverviewRulesTest.moc"

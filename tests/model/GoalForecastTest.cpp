#include "model/GoalForecast.h"
#include "model/GoalOperations.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// What the user ticks: so many days ago, at noon, a task of that weight. 0 days ago is an hour before now.
struct Tick
{
    int daysAgo = 0;
    double weight = 1;
};

using History = QList<Tick>;

const UserCalendar &vienna()
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    return calendar;
}

const QDate today(2026, 11, 25);

Instant noon(int daysAgo)
{
    return vienna().instant(today.addDays(-daysAgo), QTime(12, 0));
}

/// The goal after the history, with tasks of `openWeight` left.
Goal replayed(const History &history, double openWeight)
{
    Goal goal;
    addSubgoal(goal, u"s"_s);
    const QUuid subgoal = goal.subgoals->first().id;
    addTask(goal, subgoal, u"open"_s, openWeight);
    for (const Tick &tick : history) {
        addTask(goal, subgoal, u"t"_s, tick.weight);
        toggleTask(goal, subgoal, goal.subgoals->first().tasks->last().id, noon(tick.daysAgo));
    }
    return goal;
}

} // namespace

Q_DECLARE_METATYPE(History)

class GoalForecastTest : public QObject
{
    Q_OBJECT

private slots:
    void historiesLeadToADay_data()
    {
        QTest::addColumn<History>("history");
        QTest::addColumn<double>("openWeight");
        QTest::addColumn<int>("dueInDays");
        QTest::addColumn<QString>("expected");
        const int never = 0;
        const auto row = [](const char *name, const History &history, double openWeight, int dueInDays,
                            const QString &expected) {
            QTest::newRow(name) << history << openWeight << dueInDays << expected;
        };

        row("one a week, two left", {{35}, {27}, {20}, {13}, {6}}, 2, 14,
            u"At the pace of the last four weeks: December 9, on time"_s);
        row("the same, due earlier", {{35}, {27}, {20}, {13}, {6}}, 2, 13,
            u"At the pace of the last four weeks: December 9, 1 day late"_s);
        row("due later", {{35}, {27}, {20}, {13}, {6}}, 2, 16,
            u"At the pace of the last four weeks: December 9, 2 days early"_s);
        row("no due date", {{35}, {27}, {20}, {13}, {6}}, 2, never,
            u"At the pace of the last four weeks: December 9"_s);
        row("weights count, not tasks", {{30}, {20, 7}}, 7, never,
            u"At the pace of the last four weeks: December 23"_s);
        row("into the next year", {{40}, {10, 4}}, 8, never, u"At the pace of the last four weeks: January 20, 2027"_s);
        row("what was done before does not count", {{60, 50}, {14, 4}}, 1, never,
            u"At the pace of the last four weeks: December 2"_s);
        row("two weeks of history", {{15, 50}, {10}, {3}}, 2, never, u"At the pace since November 10: December 10"_s);
        row("a week is too short", {{7, 50}, {3}}, 2, never, QString());
        row("a week and a day tell", {{8}, {3, 15}}, 2, never, u"At the pace since November 17: November 26"_s);
        row("only the first day", {{20}, {20}, {20}}, 2, never, QString());
        row("nothing lately", {{60}, {40}}, 2, never, QString());
        row("nothing at all", {}, 2, never, QString());
        row("more than ten years", {{35}, {10, 1}}, 200, never, QString());
    }

    void historiesLeadToADay()
    {
        QFETCH(const History, history);
        QFETCH(const double, openWeight);
        QFETCH(const int, dueInDays);
        Goal goal = replayed(history, openWeight);
        if (dueInDays > 0)
            goal.targetDate = noon(-dueInDays);

        const auto forecast = goalForecast(goal, noon(0), vienna());

        QTEST(forecast ? forecastText(*forecast, today, AppLanguage::English) : QString(), "expected");
    }

    void whatIsReopenedUndatedOrDoneTellsNothing()
    {
        const Goal paced = replayed({{35}, {10}}, 2);
        QVERIFY(goalForecast(paced, noon(0), vienna()));

        Goal reopened = paced;
        const Subgoal &subgoal = reopened.subgoals->first();
        toggleTask(reopened, subgoal.id, subgoal.tasks->last().id, noon(1));
        QVERIFY(!goalForecast(reopened, noon(0), vienna()));

        Goal undated = paced;
        undated.subgoals->first().tasks->last().completedAt.reset();
        QVERIFY(!goalForecast(undated, noon(0), vienna()));

        Goal done = paced;
        toggleSubgoal(done, done.subgoals->first().id, noon(1));
        QVERIFY(!goalForecast(done, noon(0), vienna()));
    }

    void aTickedSubgoalCompletesItsTasksThen()
    {
        Goal goal = replayed({{35}}, 4);
        addSubgoal(goal, u"whole"_s);
        const QUuid whole = goal.subgoals->last().id;
        addTask(goal, whole, u"t"_s, 4);
        toggleSubgoal(goal, whole, noon(5));

        QCOMPARE(goalForecast(goal, noon(0), vienna())->finish, today.addDays(28));
    }

    void theForecastIsPutIntoChineseToo()
    {
        QCOMPARE(forecastText({.finish = QDate(2027, 3, 14), .daysLate = 12}, today, AppLanguage::Chinese),
                 u"按最近四周的速度：2027年3月14日完成，晚 12 天"_s);
        QCOMPARE(forecastText({.finish = today, .since = QDate(2026, 11, 3)}, today, AppLanguage::Chinese),
                 u"按 11月3日以来的速度：11月25日完成"_s);
    }
};

TESSALY_TEST_MAIN(GoalForecastTest)
#include "GoalForecastTest.moc"

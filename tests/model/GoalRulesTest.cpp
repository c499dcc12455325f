#include "model/GoalRules.h"
#include "model/GoalOperations.h"
#include "tests/support/TestMain.h"

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A goal whose first subgoal has one task; the second one has no list of tasks.
const Goal &twoSubgoals()
{
    static const Goal goal{.subgoals = QList<Subgoal>{{.tasks = QList<GoalTask>{{.title = u"t"_s}}}, {}}};
    return goal;
}

} // namespace

class GoalRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void progressIsTheShareOfCompletedWeight_data()
    {
        QTest::addColumn<QList<double>>("weights");
        QTest::addColumn<int>("completedTasks");
        QTest::addColumn<bool>("subgoalComplete");
        QTest::addColumn<bool>("goalComplete");
        QTest::addColumn<double>("expected");

        QTest::newRow("three quarters") << QList<double>{3, 1} << 1 << false << false << 0.75;
        QTest::newRow("a zero weight counts a little") << QList<double>{0, 0.99} << 1 << false << false << 0.01;
        QTest::newRow("a negative weight too") << QList<double>{-5, 0.99} << 1 << false << false << 0.01;
        QTest::newRow("a completed subgoal completes its tasks") << QList<double>{3, 1} << 0 << true << false << 1.0;
        QTest::newRow("a complete goal is complete") << QList<double>{3, 1} << 0 << false << true << 1.0;
        QTest::newRow("without tasks the stored progress counts") << QList<double>{} << 0 << true << false << 0.4;
    }

    void progressIsTheShareOfCompletedWeight()
    {
        QFETCH(const QList<double>, weights);
        QFETCH(const int, completedTasks);
        QFETCH(const bool, subgoalComplete);
        QFETCH(const bool, goalComplete);

        QList<GoalTask> tasks;
        for (const double weight : weights)
            tasks.append({.weight = weight, .isComplete = tasks.size() < completedTasks});
        const Goal goal{.progress = 0.4,
                        .isComplete = goalComplete,
                        .subgoals = QList<Subgoal>{{.tasks = tasks, .isComplete = subgoalComplete}}};

        QTEST(goal.calculatedProgress(), "expected");
    }

    void aMovedRecordLandsImmediatelyBeforeTheTarget_data()
    {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("isMoved");

        const auto row = [](const char *name, const char *dragged, const char *target, const char *expected,
                            bool isMoved) {
            QTest::newRow(name) << QString::fromLatin1(dragged) << QString::fromLatin1(target)
                                << QString::fromLatin1(expected) << isMoved;
        };
        row("first onto third", "a", "c", "bac", true);
        row("third onto first", "c", "a", "cab", true);
        row("third onto second", "c", "b", "acb", true);
        row("first onto the next stays", "a", "b", "abc", true);
        row("onto itself", "b", "b", "abc", false);
        row("unknown target", "a", "x", "abc", false);
        row("unknown record", "x", "a", "abc", false);
    }

    void aMovedRecordLandsImmediatelyBeforeTheTarget()
    {
        QFETCH(const QString, dragged);
        QFETCH(const QString, target);
        QHash<QString, QUuid> ids;
        QList<Subgoal> subgoals;
        for (const char *name : {"a", "b", "c"}) {
            subgoals.append({.title = QString::fromLatin1(name)});
            ids.insert(subgoals.last().title, subgoals.last().id);
        }
        const QUuid unknown = QUuid::createUuid();

        QTEST(moveBefore(subgoals, ids.value(dragged, unknown), ids.value(target, unknown)), "isMoved");

        QString order;
        for (const Subgoal &subgoal : subgoals)
            order += subgoal.title;
        QTEST(order, "expected");
    }

    void percentagesDropWhatFollowsThePoint_data()
    {
        QTest::addColumn<double>("fraction");
        QTest::addColumn<int>("expected");

        QTest::newRow("nearly done") << 0.999 << 99;
        QTest::newRow("done") << 1.0 << 100;
        QTest::newRow("nothing") << 0.0 << 0;
        QTest::newRow("below nothing") << -0.019 << -1;
        QTest::newRow("three eighths") << 0.375 << 37;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0;
        QTest::newRow("beyond counting") << 1e300 << std::numeric_limits<int>::max();
    }

    void percentagesDropWhatFollowsThePoint()
    {
        QFETCH(const double, fraction);
        QTEST(percentage(fraction), "expected");
    }

    void roundedPercentagesAddUpToTheWhole_data()
    {
        QTest::addColumn<QList<double>>("fractions");
        QTest::addColumn<int>("whole");
        QTest::addColumn<QList<int>>("expected");

        QTest::newRow("thirds") << QList<double>{1 / 3.0, 1 / 3.0, 1 / 3.0} << 100 << QList<int>{34, 33, 33};
        QTest::newRow("the largest remainder is rounded up")
            << QList<double>{0.375, 0.129, 0.496} << 100 << QList<int>{37, 13, 50};
        QTest::newRow("a part of the whole") << QList<double>{0.125, 0.125, 0.125} << 37 << QList<int>{13, 12, 12};
        QTest::newRow("whole already") << QList<double>{0.25, 0.75} << 100 << QList<int>{25, 75};
        QTest::newRow("nothing") << QList<double>{} << 0 << QList<int>{};
    }

    void roundedPercentagesAddUpToTheWhole()
    {
        QFETCH(const QList<double>, fractions);
        QFETCH(const int, whole);
        QTEST(wholePercentages(fractions, whole), "expected");
    }

    void blanksAreTrimmedAndLineBreaksAreNot()
    {
        QCOMPARE(trimmedBlanks(u" \t\u3000a b\u00a0 "_s), u"a b"_s);
        QCOMPARE(trimmedBlanks(u" \n "_s), u"\n"_s);
        QCOMPARE(trimmedBlanks(u" \t "_s), QString());
    }

    void completedGoalsStandUnderTheirCategoriesInCodePointOrder()
    {
        const auto goal = [](const std::optional<QString> &category, bool isComplete = true) {
            return Goal{.category = category, .isComplete = isComplete};
        };
        const QList<Goal> goals{goal(u"b"_s),        goal({}),     goal(u"A"_s), goal(QString()), goal(u"b"_s),
                                goal(u"A"_s, false), goal(u"😀"_s), goal(u"ｂ"_s)};

        QCOMPARE(completedGoalsByCategory(goals, u"Uncategorized"_s),
                 (QList<GoalCategory>{
                     {u"A"_s, {2}}, {u"Uncategorized"_s, {1, 3}}, {u"b"_s, {0, 4}}, {u"ｂ"_s, {7}}, {u"😀"_s, {6}}}));
    }

    void sharesSayWhatEachTaskWeighs()
    {
        const Subgoal open{.tasks = QList<GoalTask>{{.title = u"x"_s, .weight = 3}, {.title = u"y"_s, .weight = 1}}};
        const Subgoal done{.tasks = QList<GoalTask>{{.title = u"z"_s, .weight = 4}}, .isComplete = true};
        Goal goal{.subgoals = QList<Subgoal>{open, done, {.tasks = {}}}};

        QCOMPARE(goalTaskShares(goal),
                 (QList<GoalTaskShare>{{u"x"_s, 3, 38, false}, {u"y"_s, 1, 12, false}, {u"z"_s, 4, 50, true}}));

        goal.isComplete = true;
        QVERIFY(goalTaskShares(goal).isEmpty());
        QVERIFY(goalTaskShares({.progress = -1e300}).isEmpty());
    }

    void operationsChangeWhatTheyNameAndNothingElse_data()
    {
        QTest::addColumn<bool (*)(Goal &, const QUuid &, const QUuid &)>("operation");
        QTest::addColumn<Goal>("changed");

        using Operation = bool (*)(Goal &, const QUuid &, const QUuid &);
        const auto add = [](const char *name, Operation operation, const std::function<void(Goal &)> &change) {
            Goal goal = twoSubgoals();
            change(goal);
            QTest::newRow(name) << operation << goal;
        };
        add(
            "ticking a subgoal leaves its tasks",
            [](Goal &goal, const QUuid &subgoal, const QUuid &) { return toggleSubgoal(goal, subgoal, {7}); },
            [](Goal &goal) {
                goal.subgoals->first().isComplete = true;
                goal.subgoals->first().completedAt = Instant{7};
            });
        add(
            "ticking the last task leaves its subgoal",
            [](Goal &goal, const QUuid &subgoal, const QUuid &task) { return toggleTask(goal, subgoal, task, {7}); },
            [](Goal &goal) {
                goal.subgoals->first().tasks->first().isComplete = true;
                goal.subgoals->first().tasks->first().completedAt = Instant{7};
            });
        add(
            "removing a subgoal",
            [](Goal &goal, const QUuid &subgoal, const QUuid &) { return removeSubgoal(goal, subgoal); },
            [](Goal &goal) { goal.subgoals->removeFirst(); });
        add(
            "removing a task",
            [](Goal &goal, const QUuid &subgoal, const QUuid &task) { return removeTask(goal, task, subgoal); },
            [](Goal &goal) { goal.subgoals->first().tasks->clear(); });
        add(
            "weighing a task",
            [](Goal &goal, const QUuid &subgoal, const QUuid &task) { return weighTask(goal, subgoal, task, 2.5); },
            [](Goal &goal) { goal.subgoals->first().tasks->first().weight = 2.5; });
    }

    void operationsChangeWhatTheyNameAndNothingElse()
    {
        using Operation = bool (*)(Goal &, const QUuid &, const QUuid &);
        QFETCH(const Operation, operation);
        const Goal &before = twoSubgoals();
        const QUuid subgoal = before.subgoals.value().first().id;
        const QUuid task = before.subgoals.value().first().tasks.value().first().id;

        Goal goal = before;
        QVERIFY(!operation(goal, QUuid(), task));
        QCOMPARE(goal, before);
        QVERIFY(operation(goal, subgoal, task));
        QTEST(goal, "changed");
    }
};

TESSALY_TEST_MAIN(GoalRulesTest)
#include "GoalRulesTest.moc"

#include "model/Goal.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class GoalProgressTest : public QObject
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
        QFETCH(const double, expected);

        QList<GoalTask> tasks;
        for (const double weight : weights)
            tasks.append({.weight = weight, .isComplete = tasks.size() < completedTasks});
        const Goal goal{.progress = 0.4,
                        .isComplete = goalComplete,
                        .subgoals = QList<Subgoal>{{.tasks = tasks, .isComplete = subgoalComplete}}};

        QCOMPARE(goal.calculatedProgress(), expected);
    }
};

TESSALY_TEST_MAIN(GoalProgressTest)
#include "GoalProgressTest.moc"

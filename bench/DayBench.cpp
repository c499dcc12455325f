#include "bench/Bench.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/RecordGenerator.h"
#include "views/goals/GoalViewModel.h"
#include "views/todos/ReminderViewModel.h"

namespace tessaly {
namespace {

constexpr double oneFrame = 0.016;
const QString oneFrameName = QStringLiteral("one frame, 16 ms");
constexpr qsizetype manyReminders = 10'000;
constexpr qsizetype manyGoals = 200;
constexpr int tasksPerGoal = 20;

QList<Goal> goals()
{
    RecordGenerator generator(6);
    QList<Goal> list;
    for (qsizetype count = 0; count < manyGoals; ++count) {
        QList<GoalTask> tasks;
        for (int task = 0; task < tasksPerGoal; ++task)
            tasks.append(GoalTask{.title = generator.words(4)});
        list.append(Goal{.title = generator.words(3),
                         .subgoals = QList<Subgoal>{{.title = QStringLiteral("S"), .tasks = tasks}}});
    }
    return list;
}

} // namespace

TESSALY_BENCH(todos)
{
    StoreUnderTest planner;
    planner.put(keys::storageKey,
                encodeSavedData(RecordGenerator(5).savedData(0, manyReminders, 0)).value_or(QByteArray()));
    planner.start();
    ReminderViewModel open;
    open.setStore(planner.store.get());
    int row = 1;
    const auto times = bench::medianSeconds(15, {{[&] {
                                                     ReminderViewModel screen;
                                                     screen.setStore(planner.store.get());
                                                     bench::keep(screen.rows()->rowCount());
                                                 }},
                                                 {[&] { open.toggle(row++); }},
                                                 {[&] {
                                                     qsizetype count = 0;
                                                     for (const ReminderItem &item : planner.store->reminders())
                                                         count += item.isComplete ? 0 : 1;
                                                     bench::keep(count);
                                                 }}});
    report.atMostTimes(QStringLiteral("open 10,000 to-dos"), times[0], oneFrameName, oneFrame, 1);
    report.shown(QStringLiteral("open 10,000 to-dos"), times[0], QStringLiteral("plain scan"), times[2]);
    // Ticking also saves, here into memory.
    report.atMostTimes(QStringLiteral("tick one of 10,000 to-dos"), times[1], oneFrameName, oneFrame, 1);
    // The rows are computed again as a whole; the words of dates are not, and only the changed row reaches the view.
    report.atMostTimes(QStringLiteral("tick one of 10,000 to-dos"), times[1], QStringLiteral("opening the list"),
                       times[0], 0.5);
    report.shown(QStringLiteral("tick one of 10,000 to-dos"), times[1], QStringLiteral("plain scan"), times[2]);
}

TESSALY_BENCH(goals)
{
    StoreUnderTest planner;
    planner.put(keys::storageKey, encodeSavedData({.goals = goals()}).value_or(QByteArray()));
    planner.start();
    GoalViewModel open;
    open.setStore(planner.store.get());
    GoalCardModel &card = *open.card(uuidText(planner.store->goals().at(100).id));
    const auto times = bench::medianSeconds(15, {{[&] {
                                                     GoalViewModel screen;
                                                     screen.setStore(planner.store.get());
                                                     for (const Goal &goal : planner.store->goals())
                                                         bench::keep(screen.card(uuidText(goal.id)));
                                                 }},
                                                 {[&] {
                                                     const QUuid last = card.rows()->rows().at(tasksPerGoal).id;
                                                     card.drop(uuidText(last), 1);
                                                 }},
                                                 {[&] {
                                                     double progress = 0;
                                                     for (const Goal &goal : planner.store->goals())
                                                         progress += goal.calculatedProgress();
                                                     bench::keep(progress);
                                                 }}});
    report.atMostTimes(QStringLiteral("open 200 goals of 20 tasks"), times[0], oneFrameName, oneFrame, 1);
    report.shown(QStringLiteral("open 200 goals of 20 tasks"), times[0], QStringLiteral("plain scan"), times[2]);
    report.atMostTimes(QStringLiteral("drop one task of 200 goals"), times[1], oneFrameName, oneFrame, 1);
    report.shown(QStringLiteral("drop one task of 200 goals"), times[1], QStringLiteral("plain scan"), times[2]);
}

} // namespace tessaly

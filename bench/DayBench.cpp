#include "bench/Bench.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/RecordGenerator.h"
#include "views/goals/GoalViewModel.h"
#include "views/todos/ReminderViewModel.h"

namespace tessaly {
namespace {

constexpr qsizetype manyReminders = 10'000;
constexpr qsizetype manyGoals = 200;
constexpr int tasksPerGoal = 20;

QList<ReminderItem> reminders()
{
    RecordGenerator generator(5);
    QList<ReminderItem> list;
    for (qsizetype count = 0; count < manyReminders; ++count)
        list.append(generator.reminder());
    return list;
}

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
    planner.put(keys::storageKey, encodeSavedData({.reminders = reminders()}).value_or(QByteArray()));
    planner.start();
    ReminderViewModel open;
    open.setStore(planner.store.get());
    int row = 1;
    const auto times = bench::medianSeconds(15, {{[&] {
                                                     ReminderViewModel screen;
                                                     screen.setStore(planner.store.get());
                                                     bench::keep(screen.list()->rowCount());
                                                 }},
                                                 {[&] { open.toggle(row++); }}});
    // Ticking also saves, here into memory.
    report.atMostTimes(QStringLiteral("tick one of 10,000 to-dos"), times[1], QStringLiteral("opening the list"),
                       times[0], 0.1);
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
                                                 }}});
    report.atMostTimes(QStringLiteral("drop one task, 200 goals of 20"), times[1], QStringLiteral("opening all cards"),
                       times[0], 0.25);
}

} // namespace tessaly

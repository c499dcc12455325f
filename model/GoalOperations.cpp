#include "model/GoalOperations.h"

#include "model/GoalRules.h"

#include <cmath>
#include <utility>

namespace tessaly {
namespace {

template <class Record>
Record *findRecord(std::optional<QList<Record>> &records, const QUuid &id)
{
    if (!records)
        return nullptr;
    const auto found = std::ranges::find(*records, id, &Record::id);
    return found == records->end() ? nullptr : &*found;
}

GoalTask *findTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID)
{
    Subgoal *subgoal = findRecord(goal.subgoals, subgoalID);
    return subgoal ? findRecord(subgoal->tasks, taskID) : nullptr;
}

template <class Record>
bool toggle(Record *record, Instant now)
{
    if (!record)
        return false;
    record->isComplete = !record->isComplete;
    record->completedAt = record->isComplete ? std::optional(now) : std::nullopt;
    return true;
}

template <class Record>
bool rename(Record *record, const QString &title)
{
    return record && std::exchange(record->title, title) != title;
}

template <class Record>
bool remove(std::optional<QList<Record>> &records, const QUuid &id)
{
    return records && records->removeIf([&id](const Record &record) { return record.id == id; }) > 0;
}

template <class Record>
bool append(std::optional<QList<Record>> &records, const Record &record)
{
    if (record.title.isEmpty())
        return false;
    if (!records)
        records.emplace();
    records->append(record);
    return true;
}

} // namespace

bool toggleSubgoal(Goal &goal, const QUuid &subgoalID, Instant now)
{
    return toggle(findRecord(goal.subgoals, subgoalID), now);
}

bool toggleTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, Instant now)
{
    return toggle(findTask(goal, subgoalID, taskID), now);
}

bool removeSubgoal(Goal &goal, const QUuid &subgoalID)
{
    return remove(goal.subgoals, subgoalID);
}

bool removeTask(Goal &goal, const QUuid &taskID, const QUuid &subgoalID)
{
    Subgoal *subgoal = findRecord(goal.subgoals, subgoalID);
    return subgoal && remove(subgoal->tasks, taskID);
}

bool moveSubgoal(Goal &goal, const QUuid &dragged, const QUuid &target)
{
    return goal.subgoals && moveBefore(*goal.subgoals, dragged, target);
}

bool moveTask(Goal &goal, const QUuid &subgoalID, const QUuid &dragged, const QUuid &target)
{
    Subgoal *subgoal = findRecord(goal.subgoals, subgoalID);
    return subgoal && subgoal->tasks && moveBefore(*subgoal->tasks, dragged, target);
}

bool addSubgoal(Goal &goal, const QString &title)
{
    return append(goal.subgoals, Subgoal{.title = trimmedBlanks(title)});
}

bool addTask(Goal &goal, const QUuid &subgoalID, const QString &title, double weight)
{
    Subgoal *subgoal = findRecord(goal.subgoals, subgoalID);
    return subgoal && append(subgoal->tasks, GoalTask{.title = trimmedBlanks(title), .weight = weight});
}

bool renameSubgoal(Goal &goal, const QUuid &subgoalID, const QString &title)
{
    return rename(findRecord(goal.subgoals, subgoalID), title);
}

bool renameTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, const QString &title)
{
    return rename(findTask(goal, subgoalID, taskID), title);
}

bool weighTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, double weight)
{
    GoalTask *task = findTask(goal, subgoalID, taskID);
    return task && std::exchange(task->weight, weight) != weight;
}

double roundedTaskWeight(double weight)
{
    return std::round(weight * 10) / 10;
}

} // namespace tessaly

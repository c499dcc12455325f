#pragma once

#include "model/Goal.h"

#include <QList>
#include <QString>
#include <QUuid>

namespace tessaly {

// What can be done with a goal. Each operation finds its records by their ids and returns whether it changed anything.
// Completing never cascades, neither to what a record holds nor to what holds it.

/// Completes it at `now`, or opens it again.
bool toggleSubgoal(Goal &goal, const QUuid &subgoalID, Instant now);
bool toggleTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, Instant now);
bool removeSubgoal(Goal &goal, const QUuid &subgoalID);
bool removeTask(Goal &goal, const QUuid &taskID, const QUuid &subgoalID);
/// Moves the dragged subgoal immediately before the target; see moveBefore().
bool moveSubgoal(Goal &goal, const QUuid &dragged, const QUuid &target);
bool moveTask(Goal &goal, const QUuid &subgoalID, const QUuid &dragged, const QUuid &target);
/// Appends a subgoal with the title, without the blanks around it; false when nothing is left.
bool addSubgoal(Goal &goal, const QString &title);
/// Appends a task in the same way.
bool addTask(Goal &goal, const QUuid &subgoalID, const QString &title, double weight);
bool renameSubgoal(Goal &goal, const QUuid &subgoalID, const QString &title);
bool renameTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, const QString &title);
bool weighTask(Goal &goal, const QUuid &subgoalID, const QUuid &taskID, double weight);

/// The weight of a task that was not given one.
constexpr double defaultTaskWeight = 1.0;
/// To one digit after the point: steps of a tenth add up to 0.30000000000000004 and the like.
[[nodiscard]] double roundedTaskWeight(double weight);

} // namespace tessaly

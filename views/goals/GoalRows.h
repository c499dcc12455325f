#pragma once

#include "views/RowListModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqml.h>
#include <QUuid>

#include <utility>

namespace tessaly {

/// What rows of the goals screen and of a goal's card stand for.
namespace GoalRow {
Q_NAMESPACE
QML_ELEMENT

enum class Kind {
    ActiveGoal,    ///< has its own card
    Completed,     ///< header of the completed goals; begins the last card
    Category,      ///< header of a category of completed goals
    CompletedGoal, ///< a goal in the last card
};
Q_ENUM_NS(Kind)

enum class Part {
    Subgoal, ///< begins a block: the subgoal's own row and the heading of its tasks
    Task,
    AddTask, ///< ends a block
};
Q_ENUM_NS(Part)
} // namespace GoalRow

/// A row of the goals screen. Roles: kind, label (of a category), goalId, isExpanded and isEmpty (of headers), isLast
/// (of the last card).
struct GoalListRow
{
    GoalRow::Kind kind = GoalRow::Kind::ActiveGoal;
    QString label = {};
    QUuid goalID = {};
    bool isExpanded = false;
    bool isEmpty = false;
    bool isLast = false;

    [[nodiscard]] std::pair<int, QString> key() const;
    bool operator==(const GoalListRow &) const = default;
};

/// A row of a goal's card. Roles: part, itemId, title, weight, weightText, isComplete, isEditing; in an AddTask row
/// title and weight are those of the task to add.
struct GoalCardRow
{
    GoalRow::Part part = GoalRow::Part::Task;
    /// Of the subgoal or, in a Task row, of the task.
    QUuid id = {};
    QUuid subgoalID = {};
    QString title = {};
    double weight = 0;
    bool isComplete = false;
    bool isEditing = false;

    [[nodiscard]] std::pair<int, QUuid> key() const { return {static_cast<int>(part), id}; }
    bool operator==(const GoalCardRow &) const = default;
};

using GoalListRows = RowListModel<GoalListRow>;
using GoalCardRows = RowListModel<GoalCardRow>;

[[nodiscard]] QList<GoalListRows::Role> goalListRoles();
[[nodiscard]] QList<GoalCardRows::Role> goalCardRoles();

/// With one digit after the point, the same in both languages.
[[nodiscard]] QString weightText(double weight);

} // namespace tessaly

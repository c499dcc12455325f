#include "views/goals/GoalRows.h"

#include "model/Uuid.h"

namespace tessaly {

std::pair<int, QString> GoalListRow::key() const
{
    const bool isGoal = kind == GoalRow::Kind::ActiveGoal || kind == GoalRow::Kind::CompletedGoal;
    return {static_cast<int>(kind), isGoal ? uuidText(goalID) : label};
}

QString weightText(double weight)
{
    return QString::number(weight, 'f', 1);
}

QList<GoalListRows::Role> goalListRoles()
{
    return {{"kind", [](const GoalListRow &row) { return QVariant::fromValue(row.kind); }},
            {"label", [](const GoalListRow &row) { return QVariant(row.label); }},
            {"goalId", [](const GoalListRow &row) { return QVariant(uuidText(row.goalID)); }},
            {"isExpanded", [](const GoalListRow &row) { return QVariant(row.isExpanded); }},
            {"isEmpty", [](const GoalListRow &row) { return QVariant(row.isEmpty); }},
            {"isLast", [](const GoalListRow &row) { return QVariant(row.isLast); }}};
}

QList<GoalCardRows::Role> goalCardRoles()
{
    return {{"part", [](const GoalCardRow &row) { return QVariant::fromValue(row.part); }},
            {"itemId", [](const GoalCardRow &row) { return QVariant(uuidText(row.id)); }},
            {"title", [](const GoalCardRow &row) { return QVariant(row.title); }},
            {"weight", [](const GoalCardRow &row) { return QVariant(row.weight); }},
            {"weightText", [](const GoalCardRow &row) { return QVariant(weightText(row.weight)); }},
            {"isComplete", [](const GoalCardRow &row) { return QVariant(row.isComplete); }},
            {"isEditing", [](const GoalCardRow &row) { return QVariant(row.isEditing); }}};
}

} // namespace tessaly

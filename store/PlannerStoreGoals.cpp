#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

void PlannerStore::addGoal(const Goal &goal)
{
    perform({.goals = {additionOf(goal, m_data.goals.size())}});
}

void PlannerStore::updateGoal(const Goal &goal)
{
    if (const qsizetype row = rowOf(m_data.goals, goal.id); row >= 0)
        perform({.goals = {editOf(m_data.goals.at(row), goal, row)}});
}

void PlannerStore::removeGoal(const QUuid &id)
{
    if (const qsizetype row = rowOf(m_data.goals, id); row >= 0)
        perform({.goals = {removalOf(m_data.goals.at(row), row)}});
}

} // namespace tessaly

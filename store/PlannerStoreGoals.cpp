#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

void PlannerStore::addGoal(const Goal &goal)
{
    goalsAssigned(appendRecord(m_data.goals, goal));
}

void PlannerStore::updateGoal(const Goal &goal)
{
    if (const auto rows = replaceRecord(m_data.goals, goal))
        goalsAssigned(*rows);
}

void PlannerStore::removeGoal(const QUuid &id)
{
    if (const auto rows = removeRecords(m_data.goals, id))
        goalsAssigned(*rows);
}

} // namespace tessaly

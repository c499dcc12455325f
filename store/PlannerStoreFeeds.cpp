#include "store/PlannerStore.h"

namespace tessaly {

void PlannerStore::addCalendarFeed(const QString &)
{
}

void PlannerStore::refreshCalendarFeed(const QUuid &)
{
}

void PlannerStore::deleteCalendarFeed(const QUuid &)
{
}

} // namespace tessaly

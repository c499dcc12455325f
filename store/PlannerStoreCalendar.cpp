#include "store/PlannerStore.h"

namespace tessaly {

void PlannerStore::requestCalendarAccessAndLoad() {}

void PlannerStore::startAutomaticCalendarSync() {}

} // namespace tessaly

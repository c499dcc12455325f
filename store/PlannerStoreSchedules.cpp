#include "store/PlannerStore.h"

namespace tessaly {

void PlannerStore::clearPersonalContent() {}

} // namespace tessaly

#include "store/FormDrafts.h"

#include "store/PlannerStore.h"

namespace tessaly {

FormDrafts &FormDrafts::of(PlannerStore &store)
{
    if (auto *known = store.findChild<FormDrafts *>(QString(), Qt::FindDirectChildrenOnly))
        return *known;
    return *new FormDrafts(&store); // lives as long as the store
}

} // namespace tessaly

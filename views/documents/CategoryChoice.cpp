#include "views/documents/CategoryChoice.h"

#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

QStringList categoryEntries(const PlannerStore &store)
{
    QStringList entries{store.text(QStringLiteral("未分类"), QStringLiteral("Uncategorized"))};
    for (const MarkdownCategory &category : store.documentLibrary().documentCategories())
        entries.append(category.name);
    return entries;
}

int categoryEntry(const PlannerStore &store, const std::optional<QUuid> &categoryID)
{
    return categoryID ? static_cast<int>(rowOf(store.documentLibrary().documentCategories(), *categoryID)) + 1 : 0;
}

std::optional<QUuid> categoryOfEntry(const PlannerStore &store, int entry)
{
    const QList<MarkdownCategory> &categories = store.documentLibrary().documentCategories();
    return entry >= 1 && entry <= categories.size() ? std::optional(categories.at(entry - 1).id) : std::nullopt;
}

} // namespace tessaly

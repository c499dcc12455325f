#pragma once

#include <QStringList>
#include <QUuid>

#include <optional>

namespace tessaly {

class PlannerStore;

// The choice of a category: first none, then every category in stored order.

/// What is shown for each entry, in the interface language.
[[nodiscard]] QStringList categoryEntries(const PlannerStore &store);
/// Entry of the category; that of none for a category that is not there.
[[nodiscard]] int categoryEntry(const PlannerStore &store, const std::optional<QUuid> &categoryID);
/// Category of an entry.
[[nodiscard]] std::optional<QUuid> categoryOfEntry(const PlannerStore &store, int entry);

} // namespace tessaly

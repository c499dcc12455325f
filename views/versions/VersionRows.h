#pragma once

#include "model/Generation.h"
#include "views/RowListModel.h"

namespace tessaly {

class PlannerStore;

/// A generation in the list of the sheet.
struct VersionRow
{
    Generation generation = {};
    /// The heading above the first row of its kind.
    QString group = {};
    QString title = {};
    /// When a restore point was kept; empty for others, whose title says it.
    QString moment = {};

    [[nodiscard]] QString key() const { return generationFileName(generation); }
    bool operator==(const VersionRow &) const = default;
};

/// Restore points, then what was kept today, on days of the last month, and before; each the newest first. Where
/// several rows share a day or month, they also show the time or the day.
[[nodiscard]] QList<VersionRow> versionRows(const QList<Generation> &generations, const PlannerStore &store);

/// Roles: group, title, moment.
[[nodiscard]] QList<RowListModel<VersionRow>::Role> versionRoles();

} // namespace tessaly

#pragma once

#include "model/DateLabels.h"
#include "model/DayPlan.h"
#include "views/RowListModel.h"

namespace tessaly {

class PlannerStore;

/// A row of the plan: a to-do or a goal task. The first of a group has the group's heading.
struct PlanRow
{
    QUuid id = {};
    QString heading = {};
    int groupCount = 0;
    QString title = {};
    /// Due date, or goal and weight.
    QString detail = {};
    bool isOverdue = false;
    /// When it is planned; empty when it is not.
    QString planned = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const PlanRow &) const = default;
};

using PlanRowModel = RowListModel<PlanRow>;

[[nodiscard]] QList<PlanRowModel::Role> planRoles();
[[nodiscard]] QList<PlanRow> planRows(const PlannerStore &store, const DateLabels &labels);

} // namespace tessaly

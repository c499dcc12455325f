#include "views/plan/PlanRows.h"

#include "platform/Clock.h"
#include "store/PlannedItems.h"
#include "store/PlannerStore.h"

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString overdueText(qint64 days, const PlannerStore &store)
{
    if (days <= 0)
        return store.text(u"已过期"_s, u"overdue"_s);
    if (days == 1)
        return store.text(u"已过期 1 天"_s, u"1 day overdue"_s);
    return store.text(u"已过期 %1 天"_s, u"%1 days overdue"_s).arg(days);
}

void describeReminder(PlanRow &row, const PlanItem &item, const PlannerStore &store, const DateLabels &labels)
{
    if (!item.dueDate) {
        row.detail = store.text(u"无截止时间"_s, u"No due date"_s);
        return;
    }
    row.detail = labels.dayAndTime(*item.dueDate);
    row.isOverdue = *item.dueDate < store.clock().now();
    if (row.isOverdue)
        row.detail += store.text(u"，"_s, u", "_s) +
                      overdueText(store.calendar().day(*item.dueDate).daysTo(store.today()), store);
}

} // namespace

QList<PlanRowModel::Role> planRoles()
{
    return {
        {"itemId", [](const PlanRow &row) -> QVariant { return row.id.toString(); }},
        {"heading", [](const PlanRow &row) -> QVariant { return row.heading; }},
        {"groupCount", [](const PlanRow &row) -> QVariant { return row.groupCount; }},
        {"title", [](const PlanRow &row) -> QVariant { return row.title; }},
        {"detail", [](const PlanRow &row) -> QVariant { return row.detail; }},
        {"isOverdue", [](const PlanRow &row) -> QVariant { return row.isOverdue; }},
        {"planned", [](const PlanRow &row) -> QVariant { return row.planned; }},
    };
}

QList<PlanRow> planRows(const PlannerStore &store, const DateLabels &labels)
{
    const QHash<QUuid, Instant> starts = plannedStarts(store.schedules(), store.clock().now());
    QList<PlanRow> rows;
    qsizetype firstOfGroup = -1;
    bool isOfTasks = false;
    for (const PlanItem &item : openPlanItems(store.data())) {
        PlanRow row{.id = item.id, .title = item.title};
        if (item.isGoalTask)
            row.detail = store.text(u"%1 · 权重 %2"_s, u"%1 · weight %2"_s)
                             .arg(item.goalTitle, QString::number(item.weight, 'f', 1));
        else
            describeReminder(row, item, store, labels);
        if (const auto start = starts.constFind(item.id); start != starts.cend())
            row.planned = store.text(u"已排在%1"_s, u"planned %1"_s).arg(plannedTimeText(*start, store));
        if (firstOfGroup < 0 || item.isGoalTask != isOfTasks) {
            isOfTasks = item.isGoalTask;
            firstOfGroup = rows.size();
            row.heading = isOfTasks ? store.text(u"目标任务"_s, u"Goal tasks"_s) : store.text(u"待办"_s, u"To-dos"_s);
        }
        rows.append(row);
        ++rows[firstOfGroup].groupCount;
    }
    return rows;
}

} // namespace tessaly

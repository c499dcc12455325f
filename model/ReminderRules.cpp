#include "model/ReminderRules.h"

#include "model/CodePointOrder.h"

#include <QHash>

#include <algorithm>

namespace tessaly {
namespace {

/// The rows by the label that `labelOf(row)` gives, in their order; the groups in the order of their labels.
template <class LabelOf>
QList<ReminderGroup> grouped(const QList<qsizetype> &rows, LabelOf labelOf)
{
    QList<ReminderGroup> groups;
    QHash<QString, qsizetype> places;
    for (const qsizetype row : rows) {
        const QString label = labelOf(row);
        const qsizetype place = places.value(label, groups.size());
        if (place == groups.size()) {
            places.insert(label, place);
            groups.append({label, {}});
        }
        groups[place].rows.append(row);
    }
    std::ranges::sort(groups, precedesByCodePoint, &ReminderGroup::label);
    return groups;
}

template <class Holds>
QList<qsizetype> rowsThat(const QList<ReminderItem> &reminders, Holds holds)
{
    QList<qsizetype> rows;
    for (qsizetype row = 0; row < reminders.size(); ++row) {
        if (holds(reminders.at(row)))
            rows.append(row);
    }
    return rows;
}

} // namespace

ReminderItem toggled(ReminderItem item, Instant now)
{
    item.isComplete = !item.isComplete;
    item.completedAt = item.isComplete ? std::optional(now) : std::nullopt;
    return item;
}

QList<qsizetype> openItems(const QList<ReminderItem> &reminders)
{
    return rowsThat(reminders, [](const ReminderItem &item) { return !item.isComplete; });
}

QList<qsizetype> noDueDateItems(const QList<ReminderItem> &reminders)
{
    return rowsThat(reminders, [](const ReminderItem &item) { return !item.isComplete && !item.dueDate; });
}

QList<ReminderGroup> dueDateItemsByWeek(const QList<ReminderItem> &reminders, const UserCalendar &calendar,
                                        const DateLabels &labels)
{
    const auto due = [&reminders](qsizetype row) { return *reminders.at(row).dueDate; };
    QList<qsizetype> rows =
        rowsThat(reminders, [](const ReminderItem &item) { return !item.isComplete && item.dueDate; });
    std::ranges::stable_sort(rows, {}, due);
    return grouped(rows, [&](qsizetype row) { return labels.week(calendar.weekStart(calendar.day(due(row)))); });
}

QList<ReminderGroup> completedByMonth(const QList<ReminderItem> &reminders, const DateLabels &labels, Instant now)
{
    const QList<qsizetype> rows = rowsThat(reminders, [](const ReminderItem &item) { return item.isComplete; });
    QList<ReminderGroup> groups =
        grouped(rows, [&](qsizetype row) { return labels.month(reminders.at(row).completedAt.value_or(now)); });
    std::ranges::reverse(groups);
    return groups;
}

} // namespace tessaly

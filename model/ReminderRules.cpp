#include "model/ReminderRules.h"

#include "model/CodePointOrder.h"

#include <QHash>

#include <algorithm>

namespace tessaly {
namespace {

/// A row and its date. Sorting reads only these, not the records.
struct DatedRow
{
    Instant date;
    qsizetype row;

    auto operator<=>(const DatedRow &) const = default;
};

/// The rows by the label that `labelOf(date)` gives, in their order; the groups in the order of their labels.
template <class LabelOf>
QList<ReminderGroup> grouped(const QList<DatedRow> &rows, LabelOf labelOf)
{
    QList<ReminderGroup> groups;
    QHash<QString, qsizetype> places;
    qsizetype place = 0;
    for (const auto &[date, row] : rows) {
        const QString label = labelOf(date);
        // Neighbours mostly share their label.
        if (groups.isEmpty() || groups.at(place).label != label)
            place = places.value(label, groups.size());
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

bool isOverdue(const ReminderItem &item, Instant now)
{
    return !item.isComplete && item.dueDate && *item.dueDate <= now;
}

std::optional<Instant> nextDueDate(const QList<ReminderItem> &reminders, Instant now)
{
    std::optional<Instant> next;
    for (const ReminderItem &item : reminders) {
        const bool isAhead = !item.isComplete && item.dueDate && *item.dueDate > now;
        if (isAhead && (!next || *item.dueDate < *next))
            next = item.dueDate;
    }
    return next;
}

ReminderItem withDueDate(ReminderItem item, std::optional<Instant> dueDate, const UserCalendar &calendar)
{
    if (item.dueDate == dueDate)
        return item;
    item.dueDate = dueDate;
    if (!item.recurrenceRule)
        return item;
    if (!dueDate) {
        item.recurrenceRule.reset();
        item.recurrenceStart.reset();
        item.recursAfterCompletion.reset();
        return item;
    }
    item.recurrenceStart = dueDate;
    // The rule of a to-do of the 31st is another one than that of the 5th.
    const QString rule = repetitionRule(repetitionOf(*item.recurrenceRule), calendar.day(*dueDate));
    if (!rule.isEmpty())
        item.recurrenceRule = rule;
    return item;
}

ReminderItem withRepetition(ReminderItem item, Repetition repetition, bool isAfterCompletion,
                            const UserCalendar &calendar)
{
    if (repetition != Repetition::Other) {
        const QString rule = item.dueDate ? repetitionRule(repetition, calendar.day(*item.dueDate)) : QString();
        item.recurrenceRule = rule.isEmpty() ? std::nullopt : std::optional(rule);
        item.recurrenceStart = rule.isEmpty() ? std::nullopt : item.dueDate;
    }
    item.recursAfterCompletion = item.recurrenceRule && isAfterCompletion ? std::optional(true) : std::nullopt;
    return item;
}

std::optional<Instant> dueInWeek(QDate firstDay, Instant now, const UserCalendar &calendar)
{
    const QDate lastDay = firstDay.addDays(6);
    const Instant evening = calendar.instant(lastDay, QTime(18, 0));
    const Instant end = calendar.instant(lastDay, QTime(23, 59));
    if (end <= now)
        return std::nullopt;
    return evening > now ? evening : end;
}

std::optional<Instant> movedToWeek(Instant dueDate, QDate firstDay, const UserCalendar &calendar)
{
    return calendar.addingDays(dueDate, calendar.weekStart(calendar.day(dueDate)).daysTo(firstDay));
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
    QList<DatedRow> rows;
    for (qsizetype row = 0; row < reminders.size(); ++row) {
        const ReminderItem &item = reminders.at(row);
        if (!item.isComplete && item.dueDate)
            rows.append({*item.dueDate, row});
    }
    std::ranges::sort(rows);
    return grouped(rows, [&](Instant due) { return labels.week(calendar.weekStart(calendar.day(due))); });
}

QList<ReminderGroup> completedByMonth(const QList<ReminderItem> &reminders, const DateLabels &labels, Instant now)
{
    QList<DatedRow> rows;
    for (qsizetype row = 0; row < reminders.size(); ++row) {
        if (reminders.at(row).isComplete)
            rows.append({reminders.at(row).completedAt.value_or(now), row});
    }
    QList<ReminderGroup> groups = grouped(rows, [&](Instant completed) { return labels.month(completed); });
    std::ranges::reverse(groups);
    return groups;
}

} // namespace tessaly

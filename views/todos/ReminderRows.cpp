#include "views/todos/ReminderRows.h"

#include "model/ReminderRules.h"
#include "model/Repetition.h"

#include <algorithm>

namespace tessaly {

using Kind = ReminderRowKind::Kind;

QList<ReminderListRows::Role> reminderListRoles()
{
    return {{"kind", [](const ReminderListRow &row) { return QVariant::fromValue(row.kind); }},
            {"label", [](const ReminderListRow &row) { return QVariant(row.label); }},
            {"isExpanded", [](const ReminderListRow &row) { return QVariant(row.isExpanded); }},
            {"isEmpty", [](const ReminderListRow &row) { return QVariant(row.isEmpty); }},
            {"isNested", [](const ReminderListRow &row) { return QVariant(row.isNested()); }},
            {"isLast", [](const ReminderListRow &row) { return QVariant(row.isLast); }},
            {"title", [](const ReminderListRow &row) { return QVariant(row.title); }},
            {"requirement", [](const ReminderListRow &row) { return QVariant(row.requirement); }},
            {"dueText", [](const ReminderListRow &row) { return QVariant(row.dueText); }},
            {"repeatText", [](const ReminderListRow &row) { return QVariant(row.repeatText); }},
            {"isComplete", [](const ReminderListRow &row) { return QVariant(row.isComplete); }}};
}

namespace {

QString repeatText(const ReminderItem &item, AppLanguage language)
{
    if (!item.recurrenceRule || !item.dueDate)
        return {};
    return repetitionText(repetitionOf(*item.recurrenceRule), item.recursAfterCompletion.value_or(false)).in(language);
}

} // namespace

QList<ReminderListRow> reminderListRows(const QList<ReminderItem> &reminders, const UserCalendar &calendar,
                                        const DateLabels &labels, Instant now, const ReminderGroupStates &states,
                                        AppLanguage language)
{
    QList<ReminderListRow> rows;
    const auto addHeader = [&rows](Kind kind, bool isEmpty, bool isExpanded) {
        rows.append({.kind = kind, .isExpanded = isExpanded && !isEmpty, .isEmpty = isEmpty});
    };
    const auto addItems = [&](const ReminderGroup &group) {
        for (const qsizetype row : group.rows) {
            const ReminderItem &item = reminders.at(row);
            rows.append({.label = group.label,
                         .id = item.id,
                         .title = item.title,
                         .requirement = item.requirement.value_or(QString()),
                         .dueText = item.dueDate ? labels.dayAndTime(*item.dueDate) : QString(),
                         .repeatText = repeatText(item, language),
                         .isComplete = item.isComplete});
        }
    };
    const auto addGroups = [&](Kind kind, const QList<ReminderGroup> &groups, const QSet<QString> &expanded) {
        for (const ReminderGroup &group : groups) {
            rows.append({.kind = kind, .label = group.label, .isExpanded = expanded.contains(group.label)});
            if (rows.constLast().isExpanded)
                addItems(group);
        }
    };

    const QList<qsizetype> undated = noDueDateItems(reminders);
    addHeader(Kind::NoDueDate, undated.isEmpty(), states.isNoDueDateExpanded);
    if (states.isNoDueDateExpanded)
        addItems({.rows = undated});
    const QList<ReminderGroup> weeks = dueDateItemsByWeek(reminders, calendar, labels);
    addHeader(Kind::DueDates, weeks.isEmpty(), states.isDueDatesExpanded);
    if (states.isDueDatesExpanded)
        addGroups(Kind::Week, weeks, states.expandedWeeks);
    rows.last().isLast = true;
    addHeader(Kind::Completed, !std::ranges::any_of(reminders, &ReminderItem::isComplete), states.isCompletedExpanded);
    if (states.isCompletedExpanded)
        addGroups(Kind::Month, completedByMonth(reminders, labels, now), states.expandedMonths);
    rows.last().isLast = true;
    return rows;
}

int rowShowing(const QList<ReminderListRow> &rows, const ReminderItem &item, const UserCalendar &calendar,
               const DateLabels &labels)
{
    const auto placeOf = [&rows](const auto &isMeant) {
        const auto found = std::ranges::find_if(rows, isMeant);
        return found == rows.cend() ? -1 : static_cast<int>(found - rows.cbegin());
    };
    const int own = placeOf([&](const ReminderListRow &row) { return row.id == item.id; });
    if (own >= 0)
        return own;
    if (!item.dueDate)
        return placeOf([](const ReminderListRow &row) { return row.kind == Kind::NoDueDate; });
    const QString week = dueDateItemsByWeek({item}, calendar, labels).constFirst().label;
    const int weekHeader =
        placeOf([&](const ReminderListRow &row) { return row.kind == Kind::Week && row.label == week; });
    return weekHeader >= 0 ? weekHeader
                           : placeOf([](const ReminderListRow &row) { return row.kind == Kind::DueDates; });
}

} // namespace tessaly

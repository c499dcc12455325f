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
            {"isComplete", [](const ReminderListRow &row) { return QVariant(row.isComplete); }},
            {"isOverdue", [](const ReminderListRow &row) { return QVariant(row.isOverdue); }},
            {"isEditing", [](const ReminderListRow &row) { return QVariant(row.isEditing); }},
            {"count", [](const ReminderListRow &row) { return QVariant(row.count); }},
            {"overdueCount", [](const ReminderListRow &row) { return QVariant(row.overdueCount); }}};
}

namespace {

QString repeatText(const ReminderItem &item, AppLanguage language)
{
    if (!item.recurrenceRule || !item.dueDate)
        return {};
    return repetitionText(repetitionOf(*item.recurrenceRule), item.recursAfterCompletion.value_or(false)).in(language);
}

/// Puts the rows of the screen one after the other.
class RowWriter
{
public:
    RowWriter(const QList<ReminderItem> &reminders, const UserCalendar &calendar, const DateLabels &labels, Instant now,
              QUuid edited, AppLanguage language)
        : m_reminders(reminders), m_calendar(calendar), m_labels(labels), m_now(now), m_edited(edited),
          m_language(language)
    {
    }

    [[nodiscard]] const QList<ReminderListRow> &rows() const { return m_rows; }

    void addUndated(bool isExpanded)
    {
        const ReminderGroup group{.rows = noDueDateItems(m_reminders)};
        addSection(Kind::NoDueDate, {group}, isExpanded && !group.rows.isEmpty());
        if (m_rows.constLast().isExpanded)
            addItems(group);
    }

    /// A section with its groups ends a card.
    void addGroups(Kind section, Kind kind, const QList<ReminderGroup> &groups, bool isExpanded,
                   const QSet<QString> &expanded)
    {
        addSection(section, groups, isExpanded && !groups.isEmpty());
        for (const ReminderGroup &group : isExpanded ? groups : QList<ReminderGroup>()) {
            ReminderListRow header = headerOf(kind, group, expanded.contains(group.label));
            if (kind == Kind::Week)
                header.firstDay =
                    m_calendar.weekStart(m_calendar.day(*m_reminders.at(group.rows.constFirst()).dueDate));
            m_rows.append(header);
            if (header.isExpanded)
                addItems(group);
        }
        m_rows.last().isLast = true;
    }

private:
    [[nodiscard]] ReminderListRow headerOf(Kind kind, const ReminderGroup &group, bool isExpanded) const
    {
        const auto isLate = [this](qsizetype row) { return isOverdue(m_reminders.at(row), m_now); };
        return {.kind = kind,
                .label = group.label,
                .isExpanded = isExpanded,
                .count = static_cast<int>(group.rows.size()),
                .overdueCount = static_cast<int>(std::ranges::count_if(group.rows, isLate))};
    }

    void addSection(Kind kind, const QList<ReminderGroup> &groups, bool isExpanded)
    {
        ReminderListRow section{.kind = kind, .isExpanded = isExpanded};
        for (const ReminderGroup &group : groups) {
            const ReminderListRow header = headerOf(kind, group, false);
            section.count += header.count;
            section.overdueCount += header.overdueCount;
        }
        section.isEmpty = section.count == 0;
        m_rows.append(section);
    }

    void addItems(const ReminderGroup &group)
    {
        for (const qsizetype row : group.rows) {
            const ReminderItem &item = m_reminders.at(row);
            m_rows.append({.label = group.label,
                           .id = item.id,
                           .title = item.title,
                           .requirement = item.requirement.value_or(QString()),
                           .dueText = item.dueDate ? m_labels.dayAndTime(*item.dueDate) : QString(),
                           .repeatText = repeatText(item, m_language),
                           .isComplete = item.isComplete,
                           .isOverdue = isOverdue(item, m_now),
                           .isEditing = item.id == m_edited});
        }
    }

    const QList<ReminderItem> &m_reminders;
    const UserCalendar &m_calendar;
    const DateLabels &m_labels;
    Instant m_now;
    QUuid m_edited;
    AppLanguage m_language;
    QList<ReminderListRow> m_rows;
};

} // namespace

QList<ReminderListRow> reminderListRows(const QList<ReminderItem> &reminders, const UserCalendar &calendar,
                                        const DateLabels &labels, Instant now, const ReminderGroupStates &states,
                                        AppLanguage language)
{
    RowWriter writer(reminders, calendar, labels, now, states.edited, language);
    writer.addUndated(states.isNoDueDateExpanded);
    writer.addGroups(Kind::DueDates, Kind::Week, dueDateItemsByWeek(reminders, calendar, labels),
                     states.isDueDatesExpanded, states.expandedWeeks);
    writer.addGroups(Kind::Completed, Kind::Month, completedByMonth(reminders, labels, now), states.isCompletedExpanded,
                     states.expandedMonths);
    return writer.rows();
}

int weekHeaderFor(const QList<ReminderListRow> &rows, int draggedRow, int hoveredRow, QDate today)
{
    const ReminderListRow dragged = rows.value(draggedRow);
    const ReminderListRow hovered = rows.value(hoveredRow);
    const bool isDated = !dragged.dueText.isEmpty();
    if (!isDated && hovered.kind == Kind::DueDates && hovered.id.isNull() && hoveredRow >= 0)
        return hoveredRow;
    if (hovered.label.isEmpty() || dragged.label == hovered.label)
        return -1;
    const auto found = std::ranges::find_if(
        rows, [&hovered](const ReminderListRow &row) { return row.kind == Kind::Week && row.label == hovered.label; });
    if (found == rows.cend() || (!isDated && found->firstDay.addDays(6) < today))
        return -1;
    return static_cast<int>(found - rows.cbegin());
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

#include "model/ReminderGroups.h"

#include "model/CodePointOrder.h"

#include <QHash>

#include <algorithm>

namespace tessaly {

ReminderPlacement reminderPlacement(const ReminderItem &item, const UserCalendar &calendar, const DateLabels &labels,
                                    Instant now)
{
    if (item.isComplete)
        return {ReminderSection::Completed, labels.month(item.completedAt.value_or(now)), 0};
    if (!item.dueDate)
        return {};
    const QDate week = calendar.weekStart(calendar.day(*item.dueDate));
    return {ReminderSection::Due, labels.week(week), item.dueDate->seconds};
}

bool ReminderGroups::precedes(const QString &left, const QString &right) const
{
    return m_section == ReminderSection::Completed ? precedesByCodePoint(right, left)
                                                   : precedesByCodePoint(left, right);
}

qsizetype ReminderGroups::groupFor(const QString &label) const
{
    const auto found = std::ranges::lower_bound(
        m_groups, label, [this](const QString &left, const QString &right) { return precedes(left, right); },
        &ReminderGroup::label);
    return found - m_groups.cbegin();
}

ReminderGroups::Position ReminderGroups::positionFor(qsizetype storeRow,
                                                     const QList<ReminderPlacement> &placements) const
{
    const ReminderPlacement &placement = placements.at(storeRow);
    const qsizetype group = groupFor(placement.label);
    if (group == m_groups.size() || m_groups.at(group).label != placement.label)
        return {group, 0, true};
    const QList<qsizetype> &rows = m_groups.at(group).rows;
    const auto found = std::ranges::lower_bound(rows, storeRow, [&placements](qsizetype left, qsizetype right) {
        return std::pair(placements.at(left).order, left) < std::pair(placements.at(right).order, right);
    });
    return {group, found - rows.cbegin(), false};
}

ReminderGroups::Position ReminderGroups::positionOf(qsizetype storeRow,
                                                    const QList<ReminderPlacement> &placements) const
{
    Position position = positionFor(storeRow, placements);
    position.isWholeGroup = m_groups.at(position.group).rows.size() == 1;
    return position;
}

void ReminderGroups::insert(const Position &position, qsizetype storeRow, const QString &label)
{
    if (position.isWholeGroup)
        m_groups.insert(position.group, {label, {}});
    m_groups[position.group].rows.insert(position.row, storeRow);
}

void ReminderGroups::remove(const Position &position)
{
    if (position.isWholeGroup)
        m_groups.removeAt(position.group);
    else
        m_groups[position.group].rows.removeAt(position.row);
}

void ReminderGroups::assign(const QList<ReminderPlacement> &placements)
{
    m_groups.clear();
    QHash<QString, qsizetype> places;
    for (qsizetype row = 0; row < placements.size(); ++row) {
        if (placements.at(row).section != m_section)
            continue;
        const QString &label = placements.at(row).label;
        const qsizetype place = places.value(label, m_groups.size());
        if (place == m_groups.size()) {
            places.insert(label, place);
            m_groups.append({label, {}});
        }
        m_groups[place].rows.append(row);
    }
    for (ReminderGroup &group : m_groups)
        std::ranges::stable_sort(group.rows, {}, [&](qsizetype row) { return placements.at(row).order; });
    std::ranges::sort(
        m_groups, [this](const QString &left, const QString &right) { return precedes(left, right); },
        &ReminderGroup::label);
}

void ReminderGroups::shift(qsizetype first, qsizetype by)
{
    for (ReminderGroup &group : m_groups) {
        for (qsizetype &row : group.rows) {
            if (row >= first)
                row += by;
        }
    }
}

} // namespace tessaly

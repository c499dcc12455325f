#include "model/ScheduleIndex.h"

#include <algorithm>

namespace tessaly {

void ScheduleIndex::apply(const RowsChange &change, const QList<ScheduleItem> &schedules)
{
    switch (change.kind) {
    case RowsChange::Kind::Reset:
        rebuild(schedules);
        break;
    case RowsChange::Kind::Inserted:
        shiftRows(change.first, change.count);
        insertRows(change.first, change.count, schedules);
        break;
    case RowsChange::Kind::Removed:
        removeRows(change.first, change.count);
        shiftRows(change.first + change.count, -change.count);
        break;
    case RowsChange::Kind::Updated:
        removeRows(change.first, change.count);
        insertRows(change.first, change.count, schedules);
        break;
    }
}

std::span<const ScheduleIndex::Entry> ScheduleIndex::startingIn(Instant from, Instant to) const
{
    const auto first = std::ranges::lower_bound(m_entries, from, {}, &Entry::start);
    const auto last = std::lower_bound(first, m_entries.end(), to,
                                       [](const Entry &entry, Instant instant) { return entry.start < instant; });
    return {first, last};
}

void ScheduleIndex::rebuild(const QList<ScheduleItem> &schedules)
{
    m_entries.clear();
    m_entries.reserve(static_cast<size_t>(schedules.size()));
    for (qsizetype row = 0; row < schedules.size(); ++row)
        m_entries.push_back({schedules.at(row).date, row});
    std::ranges::sort(m_entries);
}

void ScheduleIndex::shiftRows(qsizetype from, qsizetype by)
{
    for (Entry &entry : m_entries)
        entry.row += entry.row >= from ? by : 0;
}

void ScheduleIndex::removeRows(qsizetype first, qsizetype count)
{
    std::erase_if(m_entries, [=](const Entry &entry) { return entry.row >= first && entry.row < first + count; });
}

void ScheduleIndex::insertRows(qsizetype first, qsizetype count, const QList<ScheduleItem> &schedules)
{
    const auto kept = static_cast<std::ptrdiff_t>(m_entries.size());
    for (qsizetype row = first; row < first + count; ++row)
        m_entries.push_back({schedules.at(row).date, row});
    std::sort(m_entries.begin() + kept, m_entries.end());
    std::inplace_merge(m_entries.begin(), m_entries.begin() + kept, m_entries.end());
}

} // namespace tessaly

#include "model/CalendarMerge.h"

#include "model/Uuid.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace tessaly {

namespace {

constexpr qsizetype noRow = -1;

class Merging
{
public:
    Merging(const CalendarSyncInput &input, const QList<ScheduleItem> &schedules)
        : m_input(input), m_before(schedules), m_after(schedules), m_isFound(std::size_t(schedules.size()))
    {
        for (const SyncedCalendar &calendar : input.calendars)
            m_calendars.insert(calendar.identifier, &calendar);
    }

    [[nodiscard]] CalendarMerge result()
    {
        indexSchedules();
        const std::vector<qsizetype> rows = rowsOfEvents();
        const QList<qsizetype> removals = decideRemovals();
        for (qsizetype i = 0; i < m_input.events.size(); ++i)
            takeEvent(m_input.events.at(i), rows[std::size_t(i)]);
        remove(removals);
        if (m_firstChanged != noRow || m_merge.added > 0 || m_merge.removed > 0) {
            m_merge.schedules = std::move(m_after);
            m_merge.rows = changedRows();
        }
        return std::move(m_merge);
    }

private:
    void indexSchedules()
    {
        m_rowsByEvent.reserve(m_before.size());
        for (qsizetype row = 0; row < m_before.size(); ++row) {
            const ScheduleItem &item = m_before.at(row);
            if (item.calendarEventIdentifier)
                m_rowsByEvent.insert(*item.calendarEventIdentifier, row);
            else
                m_unlinkedRows.insert(uuidText(item.id), row);
        }
    }

    /// The row of the schedule that each event continues, or noRow.
    [[nodiscard]] std::vector<qsizetype> rowsOfEvents()
    {
        std::vector<qsizetype> rows;
        rows.reserve(std::size_t(m_input.events.size()));
        for (const CalendarEvent &event : m_input.events) {
            const qsizetype row = m_rowsByEvent.value(event.eventIdentifier, noRow);
            if (row != noRow)
                m_isFound[std::size_t(row)] = true;
            rows.push_back(row);
        }
        return rows;
    }

    [[nodiscard]] bool isMissing(qsizetype row) const
    {
        const ScheduleItem &item = m_before.at(row);
        if (!item.calendarEventIdentifier || !item.calendarIdentifier || m_isFound[std::size_t(row)])
            return false;
        const SyncedCalendar *calendar = m_calendars.value(*item.calendarIdentifier);
        if (!calendar || !calendar->isWhole || item.date < m_input.from || item.date >= m_input.to)
            return false;
        // Another schedule may have been found in its place.
        return !m_isFound[std::size_t(m_rowsByEvent.value(*item.calendarEventIdentifier))];
    }

    /// The rows to be removed, in ascending order; sets `held` and with it the calendars to be left alone.
    [[nodiscard]] QList<qsizetype> decideRemovals()
    {
        QHash<QString, qsizetype> sizes;
        QHash<QString, QList<qsizetype>> missing;
        for (qsizetype row = 0; row < m_before.size(); ++row) {
            const std::optional<QString> &calendar = m_before.at(row).calendarIdentifier;
            if (!calendar || !m_calendars.contains(*calendar))
                continue;
            ++sizes[*calendar];
            if (isMissing(row))
                missing[*calendar].append(row);
        }
        QList<qsizetype> removals;
        for (const SyncedCalendar &calendar : m_input.calendars) {
            const QList<qsizetype> rows = missing.value(calendar.identifier);
            HeldRemoval held{.calendarIdentifier = calendar.identifier};
            for (const qsizetype row : rows) {
                if (!m_input.approvedRemovals.contains(m_before.at(row).id))
                    held.schedules.append(m_before.at(row).id);
            }
            const qsizetype count = held.schedules.size();
            if (count > unquestionedRemovals && count * 10 > sizes.value(calendar.identifier)) {
                m_calendars.remove(calendar.identifier);
                m_merge.held.append(std::move(held));
            } else {
                removals.append(rows);
            }
        }
        std::ranges::sort(removals);
        return removals;
    }

    void takeEvent(const CalendarEvent &event, qsizetype row)
    {
        const SyncedCalendar *calendar = m_calendars.value(event.calendarIdentifier);
        if (!calendar)
            return;
        if (row != noRow)
            updateSchedule(row, event, *calendar);
        else if (const auto unlinked = m_unlinkedRows.find(event.uid); unlinked != m_unlinkedRows.end())
            relink(m_unlinkedRows.take(event.uid), event, *calendar);
        else
            addSchedule(event, *calendar);
    }

    [[nodiscard]] const QString &titleOf(const CalendarEvent &event) const
    {
        return event.title ? *event.title : m_input.untitled;
    }

    void updateSchedule(qsizetype row, const CalendarEvent &event, const SyncedCalendar &calendar)
    {
        ++m_merge.updated;
        const ScheduleItem &item = m_after.at(row);
        if (item.title == titleOf(event) && item.date == event.startDate && item.endDate == event.endDate &&
            item.calendarIdentifier == event.calendarIdentifier && item.calendarColorHex == calendar.colorHex)
            return;
        ScheduleItem &changed = changedSchedule(row);
        changed.title = titleOf(event);
        changed.date = event.startDate;
        changed.endDate = event.endDate;
        changed.calendarIdentifier = event.calendarIdentifier;
        changed.calendarColorHex = calendar.colorHex;
    }

    void relink(qsizetype row, const CalendarEvent &event, const SyncedCalendar &calendar)
    {
        ScheduleItem &item = changedSchedule(row);
        item.calendarEventIdentifier = event.eventIdentifier;
        item.calendarIdentifier = event.calendarIdentifier;
        item.calendarColorHex = calendar.colorHex;
        item.calendarExportRequested = true;
        m_merge.relinked.append(item.id);
    }

    void addSchedule(const CalendarEvent &event, const SyncedCalendar &calendar)
    {
        ++m_merge.added;
        m_after.append({.title = titleOf(event),
                        .date = event.startDate,
                        .endDate = event.endDate,
                        .notes = event.notes,
                        .calendarEventIdentifier = event.eventIdentifier,
                        .calendarIdentifier = event.calendarIdentifier,
                        .calendarColorHex = calendar.colorHex});
    }

    [[nodiscard]] ScheduleItem &changedSchedule(qsizetype row)
    {
        m_firstChanged = m_firstChanged == noRow ? row : std::min(m_firstChanged, row);
        m_lastChanged = std::max(m_lastChanged, row);
        return m_after[row];
    }

    void remove(const QList<qsizetype> &rows)
    {
        m_merge.removed = rows.size();
        if (rows.isEmpty())
            return;
        QList<ScheduleItem> kept;
        kept.reserve(m_after.size() - rows.size());
        qsizetype next = 0;
        for (qsizetype row = 0; row < m_after.size(); ++row) {
            if (next < rows.size() && rows.at(next) == row)
                ++next;
            else
                kept.append(std::move(m_after[row]));
        }
        m_after = std::move(kept);
        m_firstRemoved = rows.constFirst();
    }

    [[nodiscard]] RowsChange changedRows() const
    {
        const bool isChanged = m_firstChanged != noRow;
        if (isChanged && m_merge.added == 0 && m_merge.removed == 0)
            return {RowsChange::Kind::Updated, m_firstChanged, m_lastChanged - m_firstChanged + 1};
        if (!isChanged && m_merge.removed == 0)
            return {RowsChange::Kind::Inserted, m_before.size(), m_merge.added};
        if (!isChanged && m_merge.added == 0 && m_merge.removed == 1)
            return {RowsChange::Kind::Removed, m_firstRemoved, 1};
        return {};
    }

    const CalendarSyncInput &m_input;
    const QList<ScheduleItem> &m_before;
    /// Shares its memory with `m_before` until something differs.
    QList<ScheduleItem> m_after;
    CalendarMerge m_merge;
    /// Those that take part; one whose removals are held is taken out.
    QHash<QString, const SyncedCalendar *> m_calendars;
    QHash<QString, qsizetype> m_rowsByEvent;
    /// By the UID that the planner gave to the schedule's event.
    QHash<QString, qsizetype> m_unlinkedRows;
    std::vector<bool> m_isFound;
    qsizetype m_firstChanged = noRow;
    qsizetype m_lastChanged = noRow;
    qsizetype m_firstRemoved = noRow;
};

} // namespace

CalendarMerge mergeCalendars(const CalendarSyncInput &input, const QList<ScheduleItem> &schedules)
{
    return Merging(input, schedules).result();
}

} // namespace tessaly

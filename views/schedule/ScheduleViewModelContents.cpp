// What ScheduleViewModel shows.
#include "views/schedule/ScheduleViewModel.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

/// Rows of the days before are changed one by one; those of other days are replaced.
template <class Body, class Rows>
bool fill(Body &body, const QList<QDate> &days, const Rows &rows)
{
    const bool isTurned = std::exchange(body.filledFor, days) != days;
    if (isTurned)
        body.contents.replaceRows(rows);
    else
        body.contents.setRows(rows);
    return isTurned;
}

} // namespace

void ScheduleViewModel::refresh()
{
    m_visibleDays = visibleDays(calendarScope(), focusDay(), m_store->calendar(), m_store->weekOptions());
    const DaySchedules events = viewportSchedules(m_visibleDays, source());
    days()->setRows(dayRows(m_visibleDays, events, {m_store->today(), focusDay(), calendarScope(), hasDayNotes()},
                            m_store->isEnglish()));
    if (m_scope == Scope::Week)
        refreshBlocks(events);
    else
        fill(m_month, m_visibleDays, monthLineRows(m_visibleDays, events, source(), focusDay()));
    m_currentTime.follow(m_scope == Scope::Week ? m_visibleDays : QList<QDate>(), m_measures);
    refreshDayList();
    emit titlesChanged();
}

void ScheduleViewModel::refreshBlocks(const DaySchedules &events)
{
    const WeekSchedules week = weekSchedules(m_visibleDays, events, source(), m_measures);
    m_margins.follow(week, m_visibleDays, source(), m_dayWidth, m_selectedID);
    const auto rows = blockRows(m_visibleDays, week.columns, source(), m_measures, m_dayWidth, m_selectedID);
    const bool isTurned = fill(m_week, m_visibleDays, rows);
    m_drag.follow(m_visibleDays, m_measures, m_dayWidth);
    emit formFrameChanged();
    if (isTurned)
        emit weekTurned();
}

void ScheduleViewModel::refreshDayList()
{
    const QList<qsizetype> listed = selectedSchedules(focusDay(), source());
    QList<QUuid> identifiers;
    identifiers.reserve(listed.size());
    for (const qsizetype row : listed)
        identifiers.append(m_store->schedules().at(row).id);
    const bool isOtherDay = std::exchange(m_listedDay, focusDay()) != focusDay();
    const QList<QUuid> before = std::exchange(m_listed, identifiers);
    if (isOtherDay) {
        m_listWindow.kept = -1;
        m_dayList.replaceRows(dayListRows(listed, m_listWindow, source(), m_listedDay));
        emit listTurned();
        return;
    }
    if (before != identifiers) {
        const QSet<QUuid> present(identifiers.cbegin(), identifiers.cend());
        const auto departed = std::ranges::find_if(before, [&](const QUuid &id) { return !present.contains(id); });
        if (departed != before.cend())
            m_departedPlace = static_cast<int>(departed - before.cbegin());
    }
    m_dayList.setRows(dayListRows(listed, m_listWindow, source(), m_listedDay));
}

} // namespace tessaly

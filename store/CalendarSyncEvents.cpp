#include "model/ScheduleColors.h"
#include "model/Uuid.h"
#include "store/CalendarSync.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

void CalendarSync::createEvent(const QUuid &scheduleID, const QString &calendarIdentifier)
{
    const qsizetype row = rowOf(m_store.schedules(), scheduleID);
    if (row < 0 || !m_ports.eventStore.calendar(calendarIdentifier))
        return;
    const ScheduleItem &item = m_store.schedules().at(row);
    writeBegan();
    m_ports.eventStore.createEvent(
        {calendarIdentifier, uuidText(item.id), item.title, item.date, item.end(), QString()},
        [self = QPointer(this), scheduleID](const Result<CalendarEvent> &saved) {
            if (!self)
                return;
            self->writeEnded();
            if (saved) {
                self->link({{scheduleID, saved.value()}});
                return;
            }
            self->m_run.failure =
                failureMessage(QStringLiteral("无法添加到所选日历："),
                               QStringLiteral("Could not add to the selected calendar: "), saved.error());
            self->m_store.setCalendarSyncMessage(self->m_run.failure);
        });
}

void CalendarSync::link(const QList<Exported> &exported)
{
    QHash<QUuid, const CalendarEvent *> events;
    QSet<QString> calendars = m_store.visibleCalendarIDs();
    for (const Exported &each : exported)
        events.insert(each.scheduleID, &each.event);
    QList<ScheduleItem> changed;
    m_store.editSchedules([&](QList<ScheduleItem> &schedules) -> std::optional<RowsChange> {
        qsizetype first = schedules.size();
        qsizetype last = -1;
        for (qsizetype row = 0; row < schedules.size(); ++row) {
            const CalendarEvent *event = events.isEmpty() ? nullptr : events.take(schedules.at(row).id);
            if (!event)
                continue;
            ScheduleItem &item = schedules[row];
            const std::optional<EventCalendar> calendar = m_ports.eventStore.calendar(event->calendarIdentifier);
            item.calendarEventIdentifier = event->eventIdentifier;
            item.calendarIdentifier = event->calendarIdentifier;
            item.calendarColorHex = calendar ? calendarHex(*calendar) : std::nullopt;
            item.calendarExportRequested = true;
            calendars.insert(event->calendarIdentifier);
            // Edited while the event was being saved: the event must not stand with the former title or times.
            if (item.title != event->title || item.date != event->startDate || item.end() != event->endDate)
                changed.append(item);
            first = std::min(first, row);
            last = row;
        }
        return last < 0 ? std::nullopt : std::optional(RowsChange{RowsChange::Kind::Updated, first, last - first + 1});
    });
    m_store.setVisibleCalendarIDs(calendars);
    for (const ScheduleItem &item : std::as_const(changed))
        changeEvent(item);
    // Deleted while the event was being saved, when its event had no name yet.
    for (const CalendarEvent *event : std::as_const(events))
        removeEvent({.calendarEventIdentifier = event->eventIdentifier});
}

void CalendarSync::changeEvent(const ScheduleItem &schedule)
{
    if (!schedule.calendarEventIdentifier)
        return;
    writeBegan();
    // The change of the schedule stands whatever the calendar says.
    m_ports.eventStore.changeEvent(*schedule.calendarEventIdentifier,
                                   {.title = schedule.title, .startDate = schedule.date, .endDate = schedule.end()},
                                   [self = QPointer(this)](const Result<CalendarEvent> &) {
                                       if (self)
                                           self->writeEnded();
                                   });
}

void CalendarSync::removeEvent(const ScheduleItem &schedule)
{
    if (!schedule.calendarEventIdentifier)
        return;
    writeBegan();
    m_ports.eventStore.removeEvent(*schedule.calendarEventIdentifier, [self = QPointer(this)](const Result<void> &) {
        if (self)
            self->writeEnded();
    });
}

void CalendarSync::writeBegan()
{
    ++m_writesBegun;
    ++m_writesUnderWay;
}

void CalendarSync::writeEnded()
{
    if (--m_writesUnderWay == 0 && m_isFetchWaiting)
        fetch();
}

} // namespace tessaly

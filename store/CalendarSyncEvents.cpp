#include "model/ScheduleColors.h"
#include "model/Uuid.h"
#include "store/CalendarSync.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

namespace {

/// Exported schedules that are linked in one assignment.
constexpr qsizetype exportBatch = 200;

} // namespace

void CalendarSync::writeToCalendars()
{
    for (const QUuid &id : std::as_const(m_run.merge.relinked)) {
        const qsizetype row = rowOf(m_store.schedules(), id);
        if (row >= 0)
            changeEvent(m_store.schedules().at(row));
    }
    if (m_run.scope.exportsLocalSchedules)
        exportLocalSchedules();
    if (m_run.exportsUnderWay == 0)
        endSync();
}

void CalendarSync::exportLocalSchedules()
{
    m_run.exportCount = m_run.merge.relinked.size();
    const std::optional<EventCalendar> target = m_ports.eventStore.defaultCalendarForNewEvents();
    if (!target || isLeftOut(m_leftOut, target->identifier))
        return;
    QList<NewEvent> events;
    for (const ScheduleItem &item : m_store.schedules()) {
        if (!item.calendarEventIdentifier)
            events.append({target->identifier, uuidText(item.id), item.title, item.date, item.end(), item.notes});
    }
    m_run.exportsUnderWay = events.size();
    m_store.setVisibleCalendarIDs(QSet<QString>(m_store.visibleCalendarIDs()) << target->identifier);
    for (const NewEvent &event : std::as_const(events)) {
        writeBegan();
        m_ports.eventStore.createEvent(
            event, [self = QPointer(this), id = QUuid(event.uid)](const Result<CalendarEvent> &saved) {
                if (self)
                    self->scheduleExported(id, saved);
            });
    }
}

void CalendarSync::scheduleExported(const QUuid &scheduleID, const Result<CalendarEvent> &saved)
{
    writeEnded();
    --m_run.exportsUnderWay;
    if (saved) {
        ++m_run.exportCount;
        m_run.exported.append({scheduleID, saved.value()});
    } else {
        ++m_run.failedExports;
        const QString count = QString::number(m_run.failedExports);
        m_run.failure = failureMessage(QStringLiteral("%1 个日程未能导出：").arg(count),
                                       QStringLiteral("%1 not exported: ").arg(count), saved.error());
    }
    if (m_run.exportsUnderWay == 0 || m_run.exported.size() >= exportBatch)
        link(std::exchange(m_run.exported, {}));
    if (m_run.exportsUnderWay == 0)
        endSync();
}

bool CalendarSync::canCreateEventIn(const QString &calendarIdentifier) const
{
    return isAllowed() && m_ports.eventStore.calendar(calendarIdentifier);
}

void CalendarSync::createEvent(const QUuid &scheduleID, const QString &calendarIdentifier)
{
    const qsizetype row = rowOf(m_store.schedules(), scheduleID);
    if (row < 0 || !canCreateEventIn(calendarIdentifier))
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
    if (!schedule.calendarEventIdentifier || !isAllowed()) {
        reportUnwritten(schedule);
        return;
    }
    writeBegan();
    // The change of the schedule stands whatever the calendar says.
    m_ports.eventStore.changeEvent(*schedule.calendarEventIdentifier,
                                   {.title = schedule.title, .startDate = schedule.date, .endDate = schedule.end()},
                                   [self = QPointer(this)](const Result<CalendarEvent> &) {
                                       if (self)
                                           self->writeEnded();
                                   });
}

bool CalendarSync::removeEvent(const ScheduleItem &schedule)
{
    if (!schedule.calendarEventIdentifier || !isAllowed()) {
        reportUnwritten(schedule);
        return false;
    }
    writeBegan();
    m_ports.eventStore.removeEvent(*schedule.calendarEventIdentifier, [self = QPointer(this)](const Result<void> &) {
        if (self)
            self->writeEnded();
    });
    return true;
}

void CalendarSync::reportUnwritten(const ScheduleItem &schedule)
{
    if (schedule.calendarEventIdentifier && consent() == Consent::Refused)
        m_store.setCalendarSyncMessage(
            {{QStringLiteral("日历权限已收回，此修改没有写入日历。重新允许后，同步会恢复日历中的内容。"),
              QStringLiteral("Not written to the calendar: access is withdrawn. Once you allow it again, a sync brings "
                             "back what the calendar says.")},
             MessageKind::Notice});
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

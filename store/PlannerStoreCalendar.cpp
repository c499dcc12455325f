#include "model/CodePointOrder.h"
#include "model/ScheduleColors.h"
#include "model/Uuid.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include <QPointer>

namespace tessaly {

namespace {

std::optional<QString> hexOf(const EventCalendar &calendar)
{
    return calendar.color ? std::optional(colorHex(*calendar.color)) : std::nullopt;
}

} // namespace

void PlannerStore::writeToCalendar(const QUuid &scheduleID, const QString &calendarIdentifier)
{
    const qsizetype row = rowOf(m_data.schedules, scheduleID);
    const std::optional<EventCalendar> target = ports().eventStore.calendar(calendarIdentifier);
    if (row < 0 || !target)
        return;
    const ScheduleItem item = m_data.schedules.at(row);
    const NewEvent event{.calendarIdentifier = target->identifier,
                         .uid = uuidText(item.id),
                         .title = item.title,
                         .startDate = item.date,
                         .endDate = item.end()};
    ports().eventStore.createEvent(
        event, [self = QPointer(this), item, target = *target](const Result<CalendarEvent> &saved) {
            if (!self)
                return;
            if (saved)
                self->linkToEvent(item, target, saved.value());
            else
                self->tellFailure(QStringLiteral("无法添加到所选日历："),
                                  QStringLiteral("Could not add to the selected calendar: "), saved.error());
        });
}

void PlannerStore::linkToEvent(const ScheduleItem &written, const EventCalendar &target, const CalendarEvent &saved)
{
    const qsizetype row = rowOf(m_data.schedules, written.id);
    if (row < 0) {
        // Deleted while the event was being saved, when its event had no name yet.
        removeCalendarEvent(saved.eventIdentifier);
        return;
    }
    ScheduleItem &item = m_data.schedules[row];
    item.calendarEventIdentifier = saved.eventIdentifier;
    item.calendarIdentifier = target.identifier;
    item.calendarColorHex = hexOf(target);
    item.calendarExportRequested = true;
    const ScheduleItem linked = item;
    schedulesAssigned({RowsChange::Kind::Updated, row, 1});
    setVisibleCalendarIDs(QSet<QString>(visibleCalendarIDs()) << target.identifier);
    // Edited while the event was being saved: the event must not stand with the former title or times.
    if (linked.title != written.title || linked.date != written.date || linked.end() != written.end())
        changeCalendarEvent(linked);
}

void PlannerStore::changeCalendarEvent(const ScheduleItem &item)
{
    // The change of the schedule stands whatever the calendar says.
    if (item.calendarEventIdentifier)
        ports().eventStore.changeEvent(*item.calendarEventIdentifier,
                                       {.title = item.title, .startDate = item.date, .endDate = item.end()},
                                       [](const Result<CalendarEvent> &) {});
}

void PlannerStore::removeCalendarEvent(const QString &eventIdentifier)
{
    ports().eventStore.removeEvent(eventIdentifier, [](const Result<void> &) {});
}

void PlannerStore::requestCalendarAccess(const std::function<void(const Result<bool> &)> &completion)
{
    // The service may answer after the store's end.
    ports().eventStore.requestAccess([store = QPointer(this), completion](const Result<bool> &granted) {
        if (store)
            completion(granted);
    });
}

void PlannerStore::requestCalendarAccessAndLoad()
{
    // Without a service there is nothing to request, and the sheet says so.
    if (!ports().eventStore.isAvailable())
        return;
    requestCalendarAccess([this](const Result<bool> &granted) {
        if (!granted)
            tellFailure(QStringLiteral("无法访问日历："), QStringLiteral("Unable to access Calendar: "),
                        granted.error());
        else if (granted.value())
            loadCalendars();
        else
            setCalendarSyncMessage(
                {{QStringLiteral("未获日历访问权限，请在系统设置中允许 Tessaly 访问日历。"),
                  QStringLiteral("Calendar access was not granted. Allow Tessaly in System Settings.")},
                 MessageKind::Failure});
    });
}

void PlannerStore::loadCalendars()
{
    m_availableCalendars.clear();
    QSet<QString> identifiers;
    for (const EventCalendar &calendar : ports().eventStore.calendars()) {
        m_availableCalendars.append({.id = calendar.identifier,
                                     .title = calendar.title,
                                     .sourceTitle = calendar.sourceTitle,
                                     .colorHex = hexOf(calendar)});
        identifiers.insert(calendar.identifier);
    }
    std::ranges::stable_sort(m_availableCalendars, [](const CalendarOption &left, const CalendarOption &right) {
        return left.sourceTitle == right.sourceTitle ? precedesByCodePoint(left.title, right.title)
                                                     : precedesByCodePoint(left.sourceTitle, right.sourceTitle);
    });
    emit availableCalendarsChanged();
    if (selectedCalendarIDs().isEmpty())
        setSelectedCalendarIDs(identifiers);
    if (visibleCalendarIDs().isEmpty())
        setVisibleCalendarIDs(identifiers);
}

void PlannerStore::startAutomaticCalendarSync()
{
    if (!automaticCalendarSync())
        return;
    requestCalendarAccess([this](const Result<bool> &granted) {
        if (granted && granted.value())
            loadCalendars();
    });
}

} // namespace tessaly

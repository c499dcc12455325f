#include "model/CodePointOrder.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <cmath>

namespace tessaly {

std::optional<QString> PlannerStore::colorHex(const EventCalendar &calendar)
{
    if (!calendar.color)
        return std::nullopt;
    const auto component = [](double value) { return static_cast<uint>(std::lround(value * 255.0)); };
    return QString::asprintf("#%02X%02X%02X", component(calendar.color->red), component(calendar.color->green),
                             component(calendar.color->blue));
}

void PlannerStore::writeToCalendar(const QUuid &scheduleID, const QString &calendarIdentifier)
{
    const qsizetype row = rowOf(m_data.schedules, scheduleID);
    const std::optional<EventCalendar> target = m_ports.eventStore.calendar(calendarIdentifier);
    if (row < 0 || !target)
        return;
    const ScheduleItem item = m_data.schedules.at(row);
    const CalendarEvent event{
        .calendarIdentifier = target->identifier, .title = item.title, .startDate = item.date, .endDate = item.end()};
    m_ports.eventStore.save(event, [self = QPointer(this), item, target = *target](const Result<CalendarEvent> &saved) {
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
    item.calendarColorHex = colorHex(target);
    item.calendarExportRequested = true;
    const ScheduleItem linked = item;
    schedulesAssigned({RowsChange::Kind::Updated, row, 1});
    setVisibleCalendarIDs(QSet(m_visibleCalendarIDs) << target.identifier);
    // Edited while the event was being saved: the event must not stand with the former title or times.
    if (linked.title != written.title || linked.date != written.date || linked.end() != written.end())
        changeCalendarEvent(linked);
}

void PlannerStore::changeCalendarEvent(const ScheduleItem &item)
{
    if (!item.calendarEventIdentifier)
        return;
    std::optional<CalendarEvent> event = m_ports.eventStore.event(*item.calendarEventIdentifier);
    if (!event)
        return;
    event->title = item.title;
    event->startDate = item.date;
    event->endDate = item.end();
    // The change of the schedule stands whatever the calendar says.
    m_ports.eventStore.save(*event, [](const Result<CalendarEvent> &) {});
}

void PlannerStore::removeCalendarEvent(const QString &eventIdentifier)
{
    if (m_ports.eventStore.event(eventIdentifier))
        m_ports.eventStore.remove(eventIdentifier, [](const Result<void> &) {});
}

void PlannerStore::requestCalendarAccessAndLoad()
{
    // Where there is no service there is nothing to ask for, and the sheet says so.
    if (!m_ports.eventStore.isAvailable())
        return;
    m_ports.eventStore.requestAccess([self = QPointer(this)](const Result<bool> &granted) {
        if (!self)
            return;
        if (!granted)
            self->tellFailure(QStringLiteral("无法访问日历："), QStringLiteral("Unable to access Calendar: "),
                              granted.error());
        else if (granted.value())
            self->loadCalendars();
        else
            self->setCalendarSyncMessage(
                self->text(QStringLiteral("未获日历访问权限，请在系统设置中允许 Tessaly 访问日历。"),
                           QStringLiteral("Calendar access was not granted. Allow Tessaly in System Settings.")));
    });
}

void PlannerStore::loadCalendars()
{
    m_availableCalendars.clear();
    QSet<QString> identifiers;
    for (const EventCalendar &calendar : m_ports.eventStore.calendars()) {
        m_availableCalendars.append({.id = calendar.identifier,
                                     .title = calendar.title,
                                     .sourceTitle = calendar.sourceTitle,
                                     .colorHex = colorHex(calendar)});
        identifiers.insert(calendar.identifier);
    }
    std::ranges::stable_sort(m_availableCalendars, [](const CalendarOption &left, const CalendarOption &right) {
        return left.sourceTitle == right.sourceTitle ? precedesByCodePoint(left.title, right.title)
                                                     : precedesByCodePoint(left.sourceTitle, right.sourceTitle);
    });
    emit availableCalendarsChanged();
    if (m_selectedCalendarIDs.isEmpty())
        setSelectedCalendarIDs(identifiers);
    if (m_visibleCalendarIDs.isEmpty())
        setVisibleCalendarIDs(identifiers);
}

void PlannerStore::startAutomaticCalendarSync()
{
    if (!m_automaticCalendarSync)
        return;
    m_ports.eventStore.requestAccess([self = QPointer(this)](const Result<bool> &granted) {
        if (self && granted && granted.value())
            self->loadCalendars();
    });
}

void PlannerStore::setAutomaticCalendarSync(bool isOn)
{
    if (m_automaticCalendarSync == isOn)
        return;
    m_automaticCalendarSync = isOn;
    savePreference(keys::automaticCalendarSync, isOn);
    emit automaticCalendarSyncChanged();
    startAutomaticCalendarSync();
}

} // namespace tessaly

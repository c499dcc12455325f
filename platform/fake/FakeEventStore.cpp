#include "platform/fake/FakeEventStore.h"

#include <QTimer>

#include <algorithm>

namespace tessaly {

void FakeEventStore::complete(std::function<void()> work)
{
    if (m_isHolding)
        m_held.append(std::move(work));
    else
        QTimer::singleShot(0, &m_alive, std::move(work));
}

void FakeEventStore::releaseCompletions()
{
    m_isHolding = false;
    const QList<std::function<void()>> held = std::exchange(m_held, {});
    for (const std::function<void()> &work : held)
        work();
}

void FakeEventStore::requestAccess(AccessCompletion completion)
{
    ++m_accessRequestCount;
    complete([completion = std::move(completion), answer = m_access] { completion(answer); });
}

std::optional<EventCalendar> FakeEventStore::calendar(const QString &identifier) const
{
    const auto found = std::ranges::find(m_calendars, identifier, &EventCalendar::identifier);
    return found == m_calendars.cend() ? std::nullopt : std::optional(*found);
}

std::optional<EventCalendar> FakeEventStore::defaultCalendarForNewEvents() const
{
    const auto found = std::ranges::find(m_calendars, true, &EventCalendar::isWritable);
    return found == m_calendars.cend() ? std::nullopt : std::optional(*found);
}

std::optional<CalendarEvent> FakeEventStore::event(const QString &eventIdentifier) const
{
    const auto found = std::ranges::find(m_events, eventIdentifier, &CalendarEvent::eventIdentifier);
    return found == m_events.cend() ? std::nullopt : std::optional(*found);
}

QList<CalendarEvent> FakeEventStore::events(const QStringList &calendarIdentifiers, Instant from, Instant to) const
{
    QList<CalendarEvent> found;
    std::ranges::copy_if(m_events, std::back_inserter(found), [&](const CalendarEvent &event) {
        return calendarIdentifiers.contains(event.calendarIdentifier) && event.startDate < to &&
               (event.endDate > from || (event.startDate == event.endDate && event.startDate >= from));
    });
    return found;
}

void FakeEventStore::save(const CalendarEvent &event, SaveCompletion completion)
{
    if (m_writeFailure) {
        complete([completion = std::move(completion), error = *m_writeFailure] { completion(error); });
        return;
    }
    CalendarEvent saved = event;
    if (saved.eventIdentifier.isEmpty())
        saved.eventIdentifier = QStringLiteral("event-%1").arg(m_nextIdentifier++);
    putEvent(saved);
    complete([completion = std::move(completion), saved] { completion(saved); });
}

void FakeEventStore::remove(const QString &eventIdentifier, RemoveCompletion completion)
{
    if (m_writeFailure) {
        complete([completion = std::move(completion), error = *m_writeFailure] { completion(error); });
        return;
    }
    dropEvent(eventIdentifier);
    complete([completion = std::move(completion)] { completion({}); });
}

void FakeEventStore::loseCalendar(const QString &identifier)
{
    m_calendars.removeIf([&](const EventCalendar &calendar) { return calendar.identifier == identifier; });
    m_events.removeIf([&](const CalendarEvent &event) { return event.calendarIdentifier == identifier; });
}

void FakeEventStore::putEvent(const CalendarEvent &event)
{
    const auto found = std::ranges::find(m_events, event.eventIdentifier, &CalendarEvent::eventIdentifier);
    if (found == m_events.end())
        m_events.append(event);
    else
        *found = event;
}

void FakeEventStore::dropEvent(const QString &eventIdentifier)
{
    m_events.removeIf([&](const CalendarEvent &event) { return event.eventIdentifier == eventIdentifier; });
}

void FakeEventStore::announceChange() const
{
    if (m_changeHandler)
        m_changeHandler();
}

} // namespace tessaly

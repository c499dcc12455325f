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

void FakeEventStore::fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                                 FetchCompletion completion)
{
    ++m_fetchCount;
    complete([this, calendarIdentifiers, from, to, completion = std::move(completion)] {
        if (m_fetchFailure) {
            completion(*m_fetchFailure);
            return;
        }
        FetchedEvents fetched;
        for (const QString &identifier : calendarIdentifiers) {
            const auto unread = m_unread.constFind(identifier);
            if (unread != m_unread.cend())
                fetched.unread.append({.identifier = identifier, .reason = *unread});
            else if (!calendar(identifier))
                fetched.unread.append({.identifier = identifier, .reason = UnreadCalendar::Reason::Unreadable});
        }
        std::ranges::copy_if(m_events, std::back_inserter(fetched.events), [&](const CalendarEvent &event) {
            const auto unread = m_unread.constFind(event.calendarIdentifier);
            const bool isRead = unread == m_unread.cend() || *unread == UnreadCalendar::Reason::DamagedFiles;
            return isRead && calendarIdentifiers.contains(event.calendarIdentifier) && event.startDate < to &&
                   (event.endDate > from || (event.startDate == event.endDate && event.startDate >= from));
        });
        completion(fetched);
    });
}

void FakeEventStore::answer(const SaveCompletion &completion, const Result<CalendarEvent> &result)
{
    complete([completion, result] { completion(result); });
}

void FakeEventStore::createEvent(const NewEvent &event, SaveCompletion completion)
{
    const auto existing = std::ranges::find(m_events, event.uid, &CalendarEvent::uid);
    const std::optional<EventCalendar> target = calendar(event.calendarIdentifier);
    if (m_writeFailure || !target || !target->isWritable) {
        answer(completion, m_writeFailure.value_or(Error{ErrorCode::CalendarWriteFailed}));
    } else if (existing != m_events.end()) {
        answer(completion, *existing);
    } else {
        const CalendarEvent created{.eventIdentifier = QStringLiteral("event-%1").arg(m_nextIdentifier++),
                                    .calendarIdentifier = event.calendarIdentifier,
                                    .uid = event.uid,
                                    .title = event.title,
                                    .startDate = event.startDate,
                                    .endDate = event.endDate,
                                    .notes = event.notes};
        putEvent(created);
        answer(completion, created);
    }
}

void FakeEventStore::changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion)
{
    const auto event = std::ranges::find(m_events, eventIdentifier, &CalendarEvent::eventIdentifier);
    if (event == m_events.end()) {
        answer(completion, Error{ErrorCode::CalendarEventMissing});
    } else if (m_writeFailure) {
        answer(completion, *m_writeFailure);
    } else {
        event->title = change.title;
        event->startDate = change.startDate;
        event->endDate = change.endDate;
        answer(completion, *event);
    }
}

void FakeEventStore::removeEvent(const QString &eventIdentifier, RemoveCompletion completion)
{
    const bool isThere =
        std::ranges::find(m_events, eventIdentifier, &CalendarEvent::eventIdentifier) != m_events.end();
    Result<void> result;
    if (!isThere)
        result = Error{ErrorCode::CalendarEventMissing};
    else if (m_writeFailure)
        result = *m_writeFailure;
    else
        dropEvent(eventIdentifier);
    complete([completion = std::move(completion), result] { completion(result); });
}

void FakeEventStore::setUnread(const QString &identifier, const std::optional<UnreadCalendar::Reason> &reason)
{
    if (reason)
        m_unread.insert(identifier, *reason);
    else
        m_unread.remove(identifier);
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

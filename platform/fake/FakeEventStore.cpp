#include "platform/fake/FakeEventStore.h"

#include <QTimer>

#include <algorithm>

namespace tessaly {

FakeEventStore::FakeEventStore(std::shared_ptr<FakeCalendarDatabase> database) : m_database(std::move(database))
{
    m_database->connected.append(this);
}

FakeEventStore::~FakeEventStore()
{
    m_database->connected.removeOne(this);
}

void FakeEventStore::complete(std::function<void()> work)
{
    if (m_isHolding)
        m_held.append(std::move(work));
    else
        QTimer::singleShot(0, &m_alive, std::move(work));
}

void FakeEventStore::completeWrite(std::function<void()> work)
{
    if (m_isHoldingWrites)
        m_held.append(std::move(work));
    else
        complete(std::move(work));
}

void FakeEventStore::releaseCompletions()
{
    m_isHolding = m_isHoldingWrites = false;
    const QList<std::function<void()>> held = std::exchange(m_held, {});
    for (const std::function<void()> &work : held)
        work();
}

void FakeEventStore::requestAccess(AccessCompletion completion)
{
    ++m_accessRequestCount;
    complete([this, completion = std::move(completion), answer = m_access] {
        m_isOpen = answer && answer.value();
        completion(answer);
    });
}

QList<EventCalendar> FakeEventStore::calendars() const
{
    return m_isOpen ? m_database->calendars : QList<EventCalendar>();
}

std::optional<EventCalendar> FakeEventStore::defaultCalendarForNewEvents() const
{
    const QList<EventCalendar> known = calendars();
    const auto found = std::ranges::find(known, true, &EventCalendar::isWritable);
    return found == known.cend() ? std::nullopt : std::optional(*found);
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
        std::ranges::copy_if(m_database->events, std::back_inserter(fetched.events), [&](const CalendarEvent &event) {
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
    completeWrite([completion, result] { completion(result); });
}

std::optional<Error> FakeEventStore::objection(const QString &calendarIdentifier) const
{
    if (m_writeFailure)
        return m_writeFailure;
    const auto found = std::ranges::find(m_database->calendars, calendarIdentifier, &EventCalendar::identifier);
    if (found == m_database->calendars.cend() || !found->isWritable)
        return Error{ErrorCode::CalendarWriteFailed};
    return std::nullopt;
}

void FakeEventStore::createEvent(const NewEvent &event, SaveCompletion completion)
{
    const auto existing = std::ranges::find(m_database->events, event.uid, &CalendarEvent::uid);
    if (existing != m_database->events.end()) {
        answer(completion, *existing);
    } else if (const std::optional<Error> error = objection(event.calendarIdentifier)) {
        answer(completion, *error);
    } else {
        const CalendarEvent created{.eventIdentifier = QStringLiteral("event-%1").arg(m_database->nextIdentifier++),
                                    .calendarIdentifier = event.calendarIdentifier,
                                    .uid = event.uid,
                                    .title = event.title,
                                    .startDate = event.startDate,
                                    .endDate = std::max(event.startDate, event.endDate),
                                    .notes = event.notes};
        putEvent(created);
        answer(completion, created);
    }
}

void FakeEventStore::changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion)
{
    const auto event = std::ranges::find(m_database->events, eventIdentifier, &CalendarEvent::eventIdentifier);
    if (event == m_database->events.end()) {
        answer(completion, Error{ErrorCode::CalendarEventMissing});
    } else if (const std::optional<Error> error = objection(event->calendarIdentifier)) {
        answer(completion, *error);
    } else {
        event->title = change.title;
        event->startDate = change.startDate;
        event->endDate = std::max(change.startDate, change.endDate);
        announceLater();
        answer(completion, *event);
    }
}

void FakeEventStore::removeEvent(const QString &eventIdentifier, RemoveCompletion completion)
{
    const auto event = std::ranges::find(m_database->events, eventIdentifier, &CalendarEvent::eventIdentifier);
    Result<void> result;
    if (event == m_database->events.end())
        result = Error{ErrorCode::CalendarEventMissing};
    else if (const std::optional<Error> error = objection(event->calendarIdentifier))
        result = *error;
    else
        dropEvent(eventIdentifier);
    completeWrite([completion = std::move(completion), result] { completion(result); });
}

void FakeEventStore::setUnread(const QString &identifier, const std::optional<UnreadCalendar::Reason> &reason)
{
    if (reason)
        m_unread.insert(identifier, *reason);
    else
        m_unread.remove(identifier);
    announceLater();
}

void FakeEventStore::addCalendar(const EventCalendar &calendar)
{
    const auto found = std::ranges::find(m_database->calendars, calendar.identifier, &EventCalendar::identifier);
    if (found == m_database->calendars.end())
        m_database->calendars.append(calendar);
    else
        *found = calendar;
    announceLater();
}

void FakeEventStore::loseCalendar(const QString &identifier)
{
    m_database->calendars.removeIf([&](const EventCalendar &calendar) { return calendar.identifier == identifier; });
    m_database->events.removeIf([&](const CalendarEvent &event) { return event.calendarIdentifier == identifier; });
    announceLater();
}

void FakeEventStore::putEvent(const CalendarEvent &event)
{
    const auto found = std::ranges::find(m_database->events, event.eventIdentifier, &CalendarEvent::eventIdentifier);
    if (found == m_database->events.end())
        m_database->events.append(event);
    else
        *found = event;
    announceLater();
}

void FakeEventStore::dropEvent(const QString &eventIdentifier)
{
    m_database->events.removeIf([&](const CalendarEvent &event) { return event.eventIdentifier == eventIdentifier; });
    announceLater();
}

void FakeEventStore::announceChange() const
{
    if (m_changeHandler)
        m_changeHandler();
}

void FakeEventStore::announceLater()
{
    for (FakeEventStore *store : std::as_const(m_database->connected))
        QTimer::singleShot(0, &store->m_alive, [store] { store->announceChange(); });
}

} // namespace tessaly

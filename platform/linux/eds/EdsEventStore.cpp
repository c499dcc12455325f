#include "platform/linux/eds/EdsEventStore.h"

#include "platform/linux/eds/EdsModule.h"

#include <QSemaphore>

#include <algorithm>

namespace tessaly {

namespace {

/// What the user has just changed shall not be lost by quitting; a server that hangs must not keep the window.
constexpr int writingPatienceMs = 2000;

} // namespace

EdsEventStore::EdsEventStore(const UserCalendar &calendar)
{
    m_thread.post([this, calendar] {
        m_session = std::make_unique<EdsSession>(
            m_thread, calendar,
            EdsSession::Listener{
                .calendarsChanged = [this](const EdsCalendarList &list) { answer([this, list] { m_list = list; }); },
                .eventsRead = [this](qsizetype count) { m_eventsRead = count; },
                .databaseChanged =
                    [this] {
                        answer([this] {
                            if (m_changeHandler)
                                m_changeHandler();
                        });
                    }});
    });
}

EdsEventStore::~EdsEventStore()
{
    QSemaphore written;
    QSemaphore closed;
    withSession([&](EdsSession &session) { session.whenWritten([&] { written.release(); }); });
    (void)written.tryAcquire(1, writingPatienceMs);
    m_thread.post([&] {
        m_session.reset();
        closed.release();
    });
    closed.acquire();
}

void EdsEventStore::withSession(std::function<void(EdsSession &)> work)
{
    m_thread.post([this, work = std::move(work)] { work(*m_session); });
}

void EdsEventStore::answer(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_alive, std::move(work), Qt::QueuedConnection);
}

TextPair EdsEventStore::serviceName() const
{
    return {QStringLiteral("系统日历"), QStringLiteral("system calendar")};
}

void EdsEventStore::requestAccess(AccessCompletion completion)
{
    withSession([this, completion = std::move(completion)](EdsSession &session) {
        session.requestAccess(
            [this, completion](const Result<bool> &result) { answer([completion, result] { completion(result); }); });
    });
}

std::optional<EventCalendar> EdsEventStore::defaultCalendarForNewEvents() const
{
    return calendar(m_list.defaultIdentifier);
}

void EdsEventStore::fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                                FetchCompletion completion)
{
    withSession([this, calendarIdentifiers, from, to, completion = std::move(completion)](EdsSession &session) {
        session.fetchEvents(calendarIdentifiers, from, to, [this, completion](const Result<FetchedEvents> &result) {
            answer([completion, result] { completion(result); });
        });
    });
}

void EdsEventStore::createEvent(const NewEvent &event, SaveCompletion completion)
{
    withSession([this, event, completion = std::move(completion)](EdsSession &session) {
        session.createEvent(event, [this, completion](const Result<CalendarEvent> &result) {
            answer([completion, result] { completion(result); });
        });
    });
}

void EdsEventStore::changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion)
{
    withSession([this, eventIdentifier, change, completion = std::move(completion)](EdsSession &session) {
        session.changeEvent(eventIdentifier, change, [this, completion](const Result<CalendarEvent> &result) {
            answer([completion, result] { completion(result); });
        });
    });
}

void EdsEventStore::removeEvent(const QString &eventIdentifier, RemoveCompletion completion)
{
    withSession([this, eventIdentifier, completion = std::move(completion)](EdsSession &session) {
        session.removeEvent(eventIdentifier, [this, completion](const Result<void> &result) {
            answer([completion, result] { completion(result); });
        });
    });
}

} // namespace tessaly

extern "C" Q_DECL_EXPORT tessaly::EventStore *tessalyCreateEdsEventStore(const tessaly::UserCalendar &calendar)
{
    return new tessaly::EdsEventStore(calendar);
}

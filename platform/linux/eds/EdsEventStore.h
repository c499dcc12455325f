#pragma once

#include "platform/EventStore.h"
#include "platform/linux/eds/EdsSession.h"

#include <QObject>

#include <atomic>

namespace tessaly {

/// The calendars of Evolution Data Server. All calls to the service are made on a separate thread.
class EdsEventStore final : public EventStore
{
public:
    explicit EdsEventStore(const UserCalendar &calendar);
    /// Waits a moment for what is being written.
    ~EdsEventStore() override;
    Q_DISABLE_COPY_MOVE(EdsEventStore)

    [[nodiscard]] TextPair serviceName() const override;
    [[nodiscard]] bool needsConsent() const override { return true; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return m_list.calendars; }
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override;
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     FetchCompletion completion) override;
    [[nodiscard]] qsizetype eventsRead() const override { return m_eventsRead; }
    void createEvent(const NewEvent &event, SaveCompletion completion) override;
    void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) override;
    void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()> handler) override { m_changeHandler = std::move(handler); }

private:
    /// Runs on the service's thread.
    void withSession(std::function<void(EdsSession &)> work);
    /// Runs on the main thread, unless the event store is destroyed before.
    void answer(std::function<void()> work);

    QObject m_alive;
    std::atomic<qsizetype> m_eventsRead = 0;
    EdsCalendarList m_list;
    std::function<void()> m_changeHandler;
    const GLibThread &m_thread = GLibThread::shared();
    /// Belongs to the thread.
    std::unique_ptr<EdsSession> m_session;
};

} // namespace tessaly

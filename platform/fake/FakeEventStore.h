#pragma once

#include "platform/EventStore.h"

#include <QHash>
#include <QObject>

#include <memory>

namespace tessaly {

class FakeEventStore;

/// What a calendar service keeps, whoever is connected to it.
struct FakeCalendarDatabase
{
    QList<EventCalendar> calendars = {};
    QList<CalendarEvent> events = {};
    QList<FakeEventStore *> connected = {};
    int nextIdentifier = 1;
};

/// An event store in memory. It can refuse access, fail to answer, fail to save, lose a calendar, and hold its
/// completions back until they are released. Those over the same database see what the others do.
class FakeEventStore final : public EventStore
{
public:
    explicit FakeEventStore(std::shared_ptr<FakeCalendarDatabase> database = std::make_shared<FakeCalendarDatabase>());
    ~FakeEventStore() override;
    Q_DISABLE_COPY_MOVE(FakeEventStore)

    [[nodiscard]] TextPair serviceName() const override
    {
        return {QStringLiteral("系统日历"), QStringLiteral("system calendar")};
    }
    [[nodiscard]] bool isAvailable() const override { return m_isAvailable; }
    [[nodiscard]] bool needsConsent() const override { return m_needsConsent; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override;
    /// The first that can be written.
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override;
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     FetchCompletion completion) override;
    [[nodiscard]] qsizetype eventsRead() const override { return m_eventsRead; }
    void createEvent(const NewEvent &event, SaveCompletion completion) override;
    void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) override;
    void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()> handler) override { m_changeHandler = std::move(handler); }

    // What the outside world does to it.
    /// Replaces the one with that identifier.
    void addCalendar(const EventCalendar &calendar);
    void loseCalendar(const QString &identifier);
    void putEvent(const CalendarEvent &event);
    void dropEvent(const QString &eventIdentifier);
    void setAvailable(bool isAvailable) { m_isAvailable = isAvailable; }
    void setNeedsConsent(bool needsConsent) { m_needsConsent = needsConsent; }
    /// From now on the calendar lacks something; an empty optional ends that.
    void setUnread(const QString &identifier, const std::optional<UnreadCalendar::Reason> &reason);
    void failFetchesWith(std::optional<Error> error) { m_fetchFailure = std::move(error); }
    /// Each of the above, and each save, does this after the call.
    void announceChange() const;
    void answerAccessWith(Result<bool> answer) { m_access = std::move(answer); }
    void failWritesWith(std::optional<Error> error) { m_writeFailure = std::move(error); }
    /// While held, completions wait; releasing runs them in order.
    void holdCompletions() { m_isHolding = true; }
    /// The same for writes only; they are made at once all the same.
    void holdWriteCompletions() { m_isHoldingWrites = true; }
    void releaseCompletions();
    void setEventsRead(qsizetype count) { m_eventsRead = count; }

    [[nodiscard]] const QList<CalendarEvent> &allEvents() const { return m_database->events; }
    [[nodiscard]] int accessRequestCount() const { return m_accessRequestCount; }
    [[nodiscard]] int fetchCount() const { return m_fetchCount; }

private:
    void complete(std::function<void()> work);
    void completeWrite(std::function<void()> work);
    void answer(const SaveCompletion &completion, const Result<CalendarEvent> &result);
    /// Why nothing can be saved in the calendar, if so.
    [[nodiscard]] std::optional<Error> objection(const QString &calendarIdentifier) const;
    void announceLater();

    std::shared_ptr<FakeCalendarDatabase> m_database;
    Result<bool> m_access = true;
    std::optional<Error> m_writeFailure;
    std::optional<Error> m_fetchFailure;
    QHash<QString, UnreadCalendar::Reason> m_unread;
    std::function<void()> m_changeHandler;
    QList<std::function<void()>> m_held;
    QObject m_alive;
    qsizetype m_eventsRead = 0;
    int m_accessRequestCount = 0;
    int m_fetchCount = 0;
    bool m_isHolding = false;
    bool m_isOpen = false;
    bool m_isHoldingWrites = false;
    bool m_isAvailable = true;
    bool m_needsConsent = false;
};

} // namespace tessaly

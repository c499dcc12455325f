#pragma once

#include "platform/EventStore.h"

#include <QHash>
#include <QObject>

namespace tessaly {

/// An event store in memory. It can refuse access, fail to answer, fail to save, lose a calendar, and hold its
/// completions back until they are released.
class FakeEventStore final : public EventStore
{
public:
    [[nodiscard]] TextPair serviceName() const override
    {
        return {QStringLiteral("系统日历"), QStringLiteral("system calendar")};
    }
    [[nodiscard]] bool isAvailable() const override { return m_isAvailable; }
    [[nodiscard]] bool needsConsent() const override { return m_needsConsent; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return m_calendars; }
    [[nodiscard]] std::optional<EventCalendar> calendar(const QString &identifier) const override;
    /// The first that can be written.
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override;
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     FetchCompletion completion) override;
    void createEvent(const NewEvent &event, SaveCompletion completion) override;
    void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) override;
    void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()> handler) override { m_changeHandler = std::move(handler); }

    // What the outside world does to it.
    void addCalendar(const EventCalendar &calendar) { m_calendars.append(calendar); }
    void loseCalendar(const QString &identifier);
    void putEvent(const CalendarEvent &event);
    void dropEvent(const QString &eventIdentifier);
    void setAvailable(bool isAvailable) { m_isAvailable = isAvailable; }
    void setNeedsConsent(bool needsConsent) { m_needsConsent = needsConsent; }
    /// From now on the calendar lacks something; an empty optional ends that.
    void setUnread(const QString &identifier, const std::optional<UnreadCalendar::Reason> &reason);
    void failFetchesWith(std::optional<Error> error) { m_fetchFailure = std::move(error); }
    void announceChange() const;
    void answerAccessWith(Result<bool> answer) { m_access = std::move(answer); }
    void failWritesWith(std::optional<Error> error) { m_writeFailure = std::move(error); }
    /// While held, completions wait; releasing runs them in order.
    void holdCompletions() { m_isHolding = true; }
    void releaseCompletions();

    [[nodiscard]] const QList<CalendarEvent> &allEvents() const { return m_events; }
    [[nodiscard]] int accessRequestCount() const { return m_accessRequestCount; }
    [[nodiscard]] int fetchCount() const { return m_fetchCount; }

private:
    void complete(std::function<void()> work);
    void answer(const SaveCompletion &completion, const Result<CalendarEvent> &result);

    QList<EventCalendar> m_calendars;
    QList<CalendarEvent> m_events;
    Result<bool> m_access = true;
    std::optional<Error> m_writeFailure;
    std::optional<Error> m_fetchFailure;
    QHash<QString, UnreadCalendar::Reason> m_unread;
    std::function<void()> m_changeHandler;
    QList<std::function<void()>> m_held;
    QObject m_alive;
    int m_nextIdentifier = 1;
    int m_accessRequestCount = 0;
    int m_fetchCount = 0;
    bool m_isHolding = false;
    bool m_isAvailable = true;
    bool m_needsConsent = false;
};

} // namespace tessaly

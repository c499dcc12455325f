#pragma once

#include "platform/EventStore.h"

#include <QObject>

namespace tessaly {

/// An event store in memory. It can refuse access, fail to answer, fail to save, lose a calendar, and hold its
/// completions back until they are released.
class FakeEventStore final : public EventStore
{
public:
    [[nodiscard]] bool isAvailable() const override { return m_isAvailable; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return m_calendars; }
    [[nodiscard]] std::optional<EventCalendar> calendar(const QString &identifier) const override;
    /// The first that can be written.
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override;
    [[nodiscard]] std::optional<CalendarEvent> event(const QString &eventIdentifier) const override;
    [[nodiscard]] QList<CalendarEvent> events(const QStringList &calendarIdentifiers, Instant from,
                                              Instant to) const override;
    void save(const CalendarEvent &event, SaveCompletion completion) override;
    void remove(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()> handler) override { m_changeHandler = std::move(handler); }

    // What the outside world does to it.
    void addCalendar(const EventCalendar &calendar) { m_calendars.append(calendar); }
    void loseCalendar(const QString &identifier);
    void putEvent(const CalendarEvent &event);
    void dropEvent(const QString &eventIdentifier);
    void setAvailable(bool isAvailable) { m_isAvailable = isAvailable; }
    void announceChange() const;
    void answerAccessWith(Result<bool> answer) { m_access = std::move(answer); }
    void failWritesWith(std::optional<Error> error) { m_writeFailure = std::move(error); }
    /// While held, completions wait; releasing runs them in order.
    void holdCompletions() { m_isHolding = true; }
    void releaseCompletions();

    [[nodiscard]] const QList<CalendarEvent> &allEvents() const { return m_events; }
    [[nodiscard]] int accessRequestCount() const { return m_accessRequestCount; }

private:
    void complete(std::function<void()> work);

    QList<EventCalendar> m_calendars;
    QList<CalendarEvent> m_events;
    Result<bool> m_access = true;
    std::optional<Error> m_writeFailure;
    std::function<void()> m_changeHandler;
    QList<std::function<void()>> m_held;
    QObject m_alive;
    int m_nextIdentifier = 1;
    int m_accessRequestCount = 0;
    bool m_isHolding = false;
    bool m_isAvailable = true;
};

} // namespace tessaly

#pragma once

#include "platform/EventStore.h"

#include <QObject>

namespace tessaly {

/// Stands in where the system has no calendar service: access fails, and there is nothing to read.
class NullEventStore final : public EventStore
{
public:
    [[nodiscard]] bool isAvailable() const override { return false; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return {}; }
    [[nodiscard]] std::optional<EventCalendar> calendar(const QString &) const override { return {}; }
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override { return {}; }
    [[nodiscard]] std::optional<CalendarEvent> event(const QString &) const override { return {}; }
    [[nodiscard]] QList<CalendarEvent> events(const QStringList &, Instant, Instant) const override { return {}; }
    void save(const CalendarEvent &event, SaveCompletion completion) override;
    void remove(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()>) override {}

private:
    QObject m_alive;
};

} // namespace tessaly

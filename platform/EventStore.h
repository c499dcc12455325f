#pragma once

#include "model/Instant.h"
#include "model/Result.h"
#include "model/ScheduleColors.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace tessaly {

/// A calendar of the system's calendar service.
struct EventCalendar
{
    QString identifier = {};
    QString title = {};
    /// Name of the account that holds it.
    QString sourceTitle = {};
    /// Absent where the service knows no colour.
    std::optional<RgbColor> color = {};
    bool isWritable = true;
    /// False while the service has not read the calendar whole: what it lacks then says nothing.
    bool isComplete = true;

    bool operator==(const EventCalendar &) const = default;
};

/// One event, or one occurrence of a recurring event.
struct CalendarEvent
{
    /// Stable across runs; two occurrences never share one. Empty in an event that was not saved yet.
    QString eventIdentifier = {};
    QString calendarIdentifier = {};
    std::optional<QString> title = {};
    Instant startDate = {};
    Instant endDate = {};
    QString notes = {};

    bool operator==(const CalendarEvent &) const = default;
};

/// The system's calendar service. Reads are answered from memory; access, saving and removing finish later, on the
/// main thread. A completion runs exactly once, unless the event store was destroyed before.
class EventStore
{
public:
    using AccessCompletion = std::function<void(Result<bool>)>;
    using SaveCompletion = std::function<void(Result<CalendarEvent>)>;
    using RemoveCompletion = std::function<void(Result<void>)>;

    virtual ~EventStore() = default;

    /// False where the system has no calendar service at all: there is nothing to wait for.
    [[nodiscard]] virtual bool isAvailable() const { return true; }
    /// Answers whether the user lets the planner read and write events, or why the question could not be put.
    virtual void requestAccess(AccessCompletion completion) = 0;

    [[nodiscard]] virtual QList<EventCalendar> calendars() const = 0;
    [[nodiscard]] virtual std::optional<EventCalendar> calendar(const QString &identifier) const = 0;
    /// The calendar that new events go to, if there is one.
    [[nodiscard]] virtual std::optional<EventCalendar> defaultCalendarForNewEvents() const = 0;

    [[nodiscard]] virtual std::optional<CalendarEvent> event(const QString &eventIdentifier) const = 0;
    /// The events of the calendars that overlap [from, to).
    [[nodiscard]] virtual QList<CalendarEvent> events(const QStringList &calendarIdentifiers, Instant from,
                                                      Instant to) const = 0;

    /// Creates the event (empty identifier) or changes title, start, end and notes of this occurrence only. The
    /// completion receives the event as saved.
    virtual void save(const CalendarEvent &event, SaveCompletion completion) = 0;
    /// Removes this occurrence only.
    virtual void remove(const QString &eventIdentifier, RemoveCompletion completion) = 0;

    /// `handler` runs on the main thread after each change of the database, the planner's own included. An empty
    /// function ends the observation.
    virtual void setChangeHandler(std::function<void()> handler) = 0;
};

} // namespace tessaly

#pragma once

#include "model/AppLanguage.h"
#include "model/CalendarEvent.h"
#include "model/Result.h"
#include "model/ScheduleColors.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <functional>
#include <optional>

namespace tessaly {

/// A calendar of the system's calendar service.
struct EventCalendar
{
    /// Stable across runs, and never that of a calendar of another service.
    QString identifier = {};
    QString title = {};
    /// Name of the account that holds it.
    QString sourceTitle = {};
    /// Absent where the service knows no colour.
    std::optional<RgbColor> color = {};
    bool isWritable = true;

    bool operator==(const EventCalendar &) const = default;
};

/// "#RRGGBB", upper-case; nothing where the service knows no colour.
[[nodiscard]] inline std::optional<QString> calendarHex(const EventCalendar &calendar)
{
    return calendar.color ? std::optional(colorHex(*calendar.color)) : std::nullopt;
}

/// An event to be created.
struct NewEvent
{
    QString calendarIdentifier = {};
    /// Becomes the event's UID. The planner gives the id of the schedule, so that the event is found again.
    QString uid = {};
    QString title = {};
    Instant startDate = {};
    Instant endDate = {};
    QString notes = {};
};

/// What changes in an event; everything else in it stays as it is, what the planner does not know of included.
struct EventChange
{
    QString title = {};
    Instant startDate = {};
    Instant endDate = {};
};

/// Why a calendar, or a part of it, is not among the events fetched.
struct UnreadCalendar
{
    enum class Reason {
        /// The service has not read it to the end yet.
        Loading,
        /// Its account is offline, refuses the password, or cannot be reached.
        Offline,
        /// It cannot be read at all.
        Unreadable,
        /// All was read but the files named.
        DamagedFiles,
    };

    QString identifier = {};
    Reason reason = Reason::Unreadable;
    /// Names of the files that could not be read.
    QStringList files = {};

    bool operator==(const UnreadCalendar &) const = default;
};

struct FetchedEvents
{
    QList<CalendarEvent> events = {};
    /// The calendars asked for of which something is missing: what is not among `events` may exist there all the same.
    /// Of those not known to the service at all, too.
    QList<UnreadCalendar> unread = {};
};

/// The system's calendar service. Reads of calendars are answered from memory; everything else finishes later, on the
/// main thread. A completion runs exactly once, never before the call returned, unless the event store was destroyed
/// before. Main thread only; nothing blocks it.
class EventStore
{
public:
    using AccessCompletion = std::function<void(Result<bool>)>;
    using FetchCompletion = std::function<void(const Result<FetchedEvents> &)>;
    using SaveCompletion = std::function<void(const Result<CalendarEvent> &)>;
    using RemoveCompletion = std::function<void(const Result<void> &)>;

    virtual ~EventStore() = default;

    /// What the user knows the service as, within a sentence: "system calendar".
    [[nodiscard]] virtual TextPair serviceName() const = 0;
    /// False where the system has no calendar service at all: there is nothing to wait for.
    [[nodiscard]] virtual bool isAvailable() const { return true; }
    /// Whether the planner has to ask the user before it uses the service, because no one else does.
    [[nodiscard]] virtual bool needsConsent() const { return false; }
    /// Connects to the service and reads the list of calendars. Answers whether the user lets the planner read and
    /// write events as far as the service decides that, or why it cannot be reached.
    virtual void requestAccess(AccessCompletion completion) = 0;

    /// Empty before the access was granted.
    [[nodiscard]] virtual QList<EventCalendar> calendars() const = 0;
    [[nodiscard]] std::optional<EventCalendar> calendar(const QString &identifier) const
    {
        const QList<EventCalendar> known = calendars();
        const auto found = std::ranges::find(known, identifier, &EventCalendar::identifier);
        return found == known.cend() ? std::nullopt : std::optional(*found);
    }
    /// The calendar that new events go to, if there is one.
    [[nodiscard]] virtual std::optional<EventCalendar> defaultCalendarForNewEvents() const = 0;

    /// The events of the calendars that overlap [from, to), each once, recurring ones expanded, in no particular order.
    /// One without duration overlaps when it starts there. Endless recurrences are expanded up to ten years after now,
    /// whatever is asked for. Waits until the calendars are read, but not for an account that cannot be reached. It
    /// holds all that was saved before the call.
    virtual void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                             FetchCompletion completion) = 0;

    /// How many events have been read so far by a reading that is going on.
    [[nodiscard]] virtual qsizetype eventsRead() const { return 0; }

    /// Creates the event and answers it as it then stands. If an event with this UID is there already, in whichever
    /// calendar, answers that one and creates nothing.
    virtual void createEvent(const NewEvent &event, SaveCompletion completion) = 0;
    /// Changes this event, or this occurrence only. ErrorCode::CalendarEventMissing where it is not there. Waits until
    /// its calendar is read.
    virtual void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) = 0;
    /// Removes this event, or this occurrence only; likewise.
    virtual void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) = 0;

    /// `handler` runs on the main thread after each change of the database, the planner's own included. An empty
    /// function ends the observation.
    virtual void setChangeHandler(std::function<void()> handler) = 0;
};

} // namespace tessaly

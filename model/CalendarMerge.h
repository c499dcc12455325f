#pragma once

#include "model/CalendarEvent.h"
#include "model/RowsChange.h"
#include "model/ScheduleItem.h"

#include <QList>
#include <QSet>
#include <QUuid>

#include <optional>

namespace tessaly {

/// A calendar that takes part in a sync.
struct SyncedCalendar
{
    QString identifier = {};
    /// "#RRGGBB", upper-case.
    std::optional<QString> colorHex = {};
    /// Whether all its events in the range were fetched. If not, those that are missing are not taken as deleted.
    bool isWhole = true;
};

/// What a sync starts from.
struct CalendarSyncInput
{
    /// The events of `calendars` that overlap [from, to), each once.
    QList<CalendarEvent> events = {};
    QList<SyncedCalendar> calendars = {};
    Instant from = {};
    Instant to = {};
    /// The title of an event that has none, in the interface language.
    QString untitled = {};
    /// Schedules that the user agreed to have removed.
    QSet<QUuid> approvedRemovals = {};
};

/// Schedules that a sync would have removed from a calendar, too many to do it without a question.
struct HeldRemoval
{
    QString calendarIdentifier = {};
    QList<QUuid> schedules = {};

    bool operator==(const HeldRemoval &) const = default;
};

/// What a sync did.
struct CalendarMerge
{
    /// All schedules afterwards; absent when none differs from before.
    std::optional<QList<ScheduleItem>> schedules = {};
    /// Which of them differ; meaningless when absent.
    RowsChange rows = {};
    qsizetype added = 0;
    /// Schedules whose event was found, whether it differed or not.
    qsizetype updated = 0;
    qsizetype removed = 0;
    /// Schedules that were found to have an event already, which an earlier sync had created without learning of it.
    /// They keep their own title and times; the event is to get them.
    QList<QUuid> relinked = {};
    /// The calendars of which nothing was changed, because too much would have been removed.
    QList<HeldRemoval> held = {};
};

/// A sync removes this many schedules of a calendar, or a tenth of the calendar's, without a question.
inline constexpr qsizetype unquestionedRemovals = 20;

/// Brings the events of the system's calendars into the schedules.
///
/// An event continues the schedule with its identifier (of several the last), which takes title, start, end, calendar
/// and colour of the event and keeps everything else. One with the UID that the planner gave to a schedule without
/// event is linked with that schedule. Any other becomes a new schedule at the end of the list, notes included. A
/// linked schedule that belongs to one of the calendars, starts in [from, to), and whose event is not among those
/// fetched is removed; see SyncedCalendar::isWhole and HeldRemoval.
[[nodiscard]] CalendarMerge mergeCalendars(const CalendarSyncInput &input, const QList<ScheduleItem> &schedules);

} // namespace tessaly

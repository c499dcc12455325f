#pragma once

#include "model/Instant.h"
#include "model/UserCalendar.h"

#include <QDate>
#include <QList>
#include <QRectF>

#include <optional>

namespace tessaly {

/// The vertical measures of the week timeline, in points.
struct WeekMeasures
{
    int startHour = 0;
    double hourHeight = 0;
    double totalHeight = 0;

    bool operator==(const WeekMeasures &) const = default;
};

/// The day range aims at 520 points, with hours between 20 and 42 points. An end at or before the start shows no hours.
[[nodiscard]] WeekMeasures weekMeasures(int startHour, int endHour);

/// A schedule to be laid out: its row in the list it comes from, its start and its end (one hour if it has none).
struct DayEvent
{
    qsizetype row = 0;
    Instant start = {};
    Instant end = {};
};

/// A schedule with its sub-column among those that overlap it.
struct PositionedEvent
{
    qsizetype row = 0;
    int column = 0;
    /// Sub-columns of the whole overlap group.
    int columnCount = 1;

    bool operator==(const PositionedEvent &) const = default;
};

/// Sub-columns for the events of one day, which must be sorted by start. Events that only touch do not overlap; a
/// column is used again once its event has ended. O(n log n).
[[nodiscard]] QList<PositionedEvent> positionedEvents(const QList<DayEvent> &sortedEvents);

/// The part of a day that a block covers, in minutes since midnight.
struct MinuteSpan
{
    int start = 0;
    int end = 0;
};

/// Start and end on the clock of the day; an end on another day runs to midnight (1440).
[[nodiscard]] MinuteSpan minuteSpan(QDate day, const DayEvent &event, const UserCalendar &calendar);

/// The part of it inside the shown hours; empty, at their edge, when there is none.
[[nodiscard]] MinuteSpan shownPart(const MinuteSpan &span, const WeekMeasures &measures);

/// Where a block lies.
enum class HourSide { Within, Before, After };

/// Before or after the shown hours when no minute of it is inside them.
[[nodiscard]] HourSide sideOf(const MinuteSpan &span, const WeekMeasures &measures);

/// The block's frame inside its day column, whose time area begins at y 0. At least 22 points high and 20 wide; a block
/// beyond either end of the area is moved inside.
[[nodiscard]] QRectF blockFrame(const MinuteSpan &span, const PositionedEvent &event, const WeekMeasures &measures,
                                double dayWidth);

/// A point of time in the shown days: the place of its day, and points below the top of the time area.
struct TimePlace
{
    int place = 0;
    double y = 0;
};

/// Where the instant lies; nothing outside the days and the shown hours.
[[nodiscard]] std::optional<TimePlace> timePlace(Instant instant, const QList<QDate> &days,
                                                 const WeekMeasures &measures, const UserCalendar &calendar);

/// The minute of day under a point of the time area, at most 23:45.
[[nodiscard]] int tappedMinute(double y, const WeekMeasures &measures);
/// The nearest quarter of an hour that can be tapped.
[[nodiscard]] int roundedMinute(int tappedMinute);

} // namespace tessaly

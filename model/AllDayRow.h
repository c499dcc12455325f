#pragma once

#include "model/WeekLayout.h"

namespace tessaly {

/// A schedule in the row above the hours, over some of the shown days.
struct AllDaySpan
{
    /// Of the schedule in the list it comes from.
    qsizetype row = 0;
    /// Places of its first and last shown day.
    int first = 0;
    int last = 0;
    /// 0 at the top.
    int line = 0;
    bool beginsEarlier = false;
    bool endsLater = false;

    bool operator==(const AllDaySpan &) const = default;
};

/// The row above the hours.
struct AllDayRow
{
    /// By their first day; the longer first.
    QList<AllDaySpan> spans = {};
    /// For each shown day, how many schedules have no line.
    QList<int> restCounts = {};
    int lineCount = 0;

    bool operator==(const AllDayRow &) const = default;
};

inline constexpr int mostAllDayLines = 3;

/// Whether the schedule belongs above the hours: it covers a day from its first to its last minute, or lasts 24 hours.
[[nodiscard]] bool isAllDay(const DayEvent &event, const UserCalendar &calendar);
/// The days that the schedule touches. One that ends at midnight does not touch the day that begins then.
[[nodiscard]] std::pair<QDate, QDate> daysOf(const DayEvent &event, const UserCalendar &calendar);
/// Lays out the schedules, which must be sorted by start, over the consecutive days; those beyond them are left out.
[[nodiscard]] AllDayRow allDayRow(const QList<DayEvent> &sortedEvents, const QList<QDate> &days,
                                  const UserCalendar &calendar);
/// The height of the row, in points; 0 when it is empty.
[[nodiscard]] int allDayHeight(const AllDayRow &row);

} // namespace tessaly

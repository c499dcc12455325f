#pragma once

#include "model/Goal.h"
#include "model/ReminderItem.h"
#include "model/ScheduleItem.h"
#include "model/UserCalendar.h"

#include <QList>

namespace tessaly {

/// What is left of the current day.
struct RemainingDay
{
    /// Rows of the store's list: schedules that start today and have not ended, earliest first. One without an end
    /// counts until its start.
    QList<qsizetype> upcoming = {};
    /// The first instant after `now` at which the answer can differ without any change to the schedules.
    Instant validUntil = {};

    bool operator==(const RemainingDay &) const = default;
};

[[nodiscard]] RemainingDay remainingDay(const QList<ScheduleItem> &schedules, const UserCalendar &calendar,
                                        Instant now);

/// What is left to do today: a schedule or an open to-do.
struct TodayEntry
{
    enum class Kind { Schedule, ToDo };

    Kind kind = Kind::Schedule;
    /// Of the store's list.
    qsizetype row = 0;
    Instant moment = {};

    bool operator==(const TodayEntry &) const = default;
};

/// The first `most` of what is left of the day: its remaining schedules and the open to-dos that are due today, in the
/// order of their times; of equal ones, schedules first.
[[nodiscard]] QList<TodayEntry> todayEntries(const RemainingDay &remaining, const QList<ScheduleItem> &schedules,
                                             const QList<ReminderItem> &reminders, const UserCalendar &calendar,
                                             Instant now, qsizetype most);

/// Goals whose calculated progress is below 1.
[[nodiscard]] qsizetype activeGoalCount(const QList<Goal> &goals);

} // namespace tessaly

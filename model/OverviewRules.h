#pragma once

#include "model/Goal.h"
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

/// Goals whose calculated progress is below 1.
[[nodiscard]] qsizetype activeGoalCount(const QList<Goal> &goals);

} // namespace tessaly

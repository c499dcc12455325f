#pragma once

#include "model/AppLanguage.h"
#include "model/Goal.h"
#include "model/UserCalendar.h"

#include <QDate>

#include <optional>

namespace tessaly {

/// When a goal would be reached if its tasks went on being completed as they were lately.
struct GoalForecast
{
    QDate finish = {};
    /// The day of the first known completion, if that is less than four weeks ago: the pace is that of the days after
    /// it. Otherwise the pace is that of the last four weeks.
    std::optional<QDate> since = {};
    /// From the goal's due date to the finish; negative when that is earlier. Absent without a due date.
    std::optional<qint64> daysLate = {};

    bool operator==(const GoalForecast &) const = default;
};

/// Nothing where the dates of completion do not tell: nothing is left or was completed in those weeks, the first known
/// completion is less than a week ago, or it would take longer than ten years. Tasks that were completed without a
/// date, or at a time still to come, do not count for the pace.
[[nodiscard]] std::optional<GoalForecast> goalForecast(const Goal &goal, Instant now, const UserCalendar &calendar);

/// "At the pace of the last four weeks: March 14, 12 days late"; the year only where it is another one than that of
/// `today`.
[[nodiscard]] QString forecastText(const GoalForecast &forecast, QDate today, AppLanguage language);

} // namespace tessaly

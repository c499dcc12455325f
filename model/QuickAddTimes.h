#pragma once

#include "model/QuickAddCursor.h"

namespace tessaly {

/// A time as it was said.
struct QuickAddClock
{
    int hour = 0;
    int minute = 0;
    /// By the 24-hour clock.
    bool isExact = false;
    /// 0 for am, 12 for pm.
    std::optional<int> meridiem = {};
    DayPeriod period = DayPeriod::None;

    [[nodiscard]] bool isMarked() const { return isExact || meridiem || period != DayPeriod::None; }
    /// Minutes since midnight, 24 hours and more for the night that follows the day. Hours from 1 to 6 that nothing
    /// tells apart are those of the afternoon.
    [[nodiscard]] int minutes() const;
};

struct QuickAddTime
{
    QuickAddClock start = {};
    std::optional<QuickAddClock> end = {};
    /// Understood only beside a date, or where it stands by itself.
    bool isUnsure = false;
};

/// "3pm", "15:00", "下午三点半", "at 3", "3-5pm", "下午3点到5点".
[[nodiscard]] std::optional<QuickAddTime> readTime(QuickAddCursor &cursor);

/// "1h30", "for an hour and a half", "一个半小时", in minutes.
[[nodiscard]] std::optional<int> readLength(QuickAddCursor &cursor);

/// "in 20 minutes", "半小时后": minutes from now.
[[nodiscard]] std::optional<int> readMomentFromNow(QuickAddCursor &cursor);

/// Start and end of the time in minutes since midnight, see QuickAddClock::minutes(); the end is later than the start.
/// A period that was said elsewhere counts for a time without one.
struct QuickAddMinutes
{
    int start = 0;
    std::optional<int> end = {};
};
[[nodiscard]] QuickAddMinutes minutesOf(QuickAddTime time, DayPeriod period);

/// When something begins of which only the part of the day is said.
[[nodiscard]] int defaultMinutes(DayPeriod period);

} // namespace tessaly

#pragma once

namespace tessaly {

/// What the user chose to see in the week and the month. By default both are as without any choice.
struct WeekOptions
{
    bool hidesWeekend = false;
    /// Of ISO 8601.
    bool showsWeekNumbers = false;
    /// All-day and multi-day schedules stand in a row above the hours, and what passes midnight on each of its days.
    bool hasAllDayRow = false;
    /// Schedules outside the shown hours are marks at the edge, not blocks.
    bool marksHiddenTimes = false;
    /// Lunar days, solar terms, holidays and make-up work days of China.
    bool showsChineseCalendar = false;
    /// A time that is chosen by a tap is a whole quarter of an hour, not the minute under the pointer.
    bool roundsTaps = false;

    bool operator==(const WeekOptions &) const = default;
};

} // namespace tessaly

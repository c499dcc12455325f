#pragma once

#include "model/ScheduleRules.h"

namespace tessaly {

/// What a drag on the week does.
enum class WeekDragKind { Move, ResizeStart, ResizeEnd, Select };

/// A place in the week: a day, and the minute of it as the clock shows it.
struct WeekPoint
{
    QDate day = {};
    double minute = 0;
};

/// A drag on the week.
struct WeekDrag
{
    WeekDragKind kind = WeekDragKind::Select;
    /// Where the pointer was pressed.
    WeekPoint pressed = {};
    /// Of the schedule that is dragged; a selection has none.
    FormTimes times = {};
    /// The shown part of each day, in minutes.
    int firstMinute = 0;
    int lastMinute = 1440;
};

/// Pointers move by steps of so many minutes, or of fewer with the Shift key.
inline constexpr int dragStepMinutes = 15;
inline constexpr int fineDragStepMinutes = 5;

/// The times that the drag leads to with the pointer at the place. Whole steps of the clock, inside the shown hours and
/// at least 15 minutes; a drag of less than half a step leaves the minute alone. A move keeps the length; a time that a
/// clock change skips becomes one after it.
[[nodiscard]] FormTimes draggedTimes(const WeekDrag &drag, const WeekPoint &pointer, int stepMinutes,
                                     const UserCalendar &calendar);

/// The hour that has the pointer in its middle: whole steps of the clock, inside the shown hours as far as they last.
[[nodiscard]] FormTimes hourAround(const WeekPoint &pointer, int firstMinute, int lastMinute, int stepMinutes,
                                   const UserCalendar &calendar);

/// The times so many days on by the calendar, and so many minutes on in real time. The length stays, but moved by days
/// alone whole days stay whole days where the clock changes.
[[nodiscard]] FormTimes movedTimes(const FormTimes &times, int days, int minutes, const UserCalendar &calendar);

/// What a drag over so many days makes of times that stand above the hours: all of them, or their start or end alone,
/// as far as they still last long enough to stand there.
[[nodiscard]] FormTimes draggedDays(WeekDragKind kind, const FormTimes &times, int days, const UserCalendar &calendar);

/// The length in words: "1 h 30 min" or "1 小时 30 分".
[[nodiscard]] QString lengthText(const FormTimes &times, bool isEnglish);

} // namespace tessaly

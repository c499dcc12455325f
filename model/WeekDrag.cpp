#include "model/WeekDrag.h"

#include "model/AllDayRow.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr int minutesPerDay = 1440;
constexpr int leastMinutes = 15;

Instant at(QDate day, int minute, const UserCalendar &calendar)
{
    if (minute == minutesPerDay)
        return calendar.instant(day.addDays(1), QTime(0, 0));
    return calendar.instant(day, QTime(minute / 60, minute % 60));
}

Instant shifted(Instant moment, int days, const UserCalendar &calendar)
{
    return calendar.addingDays(moment, days).value_or(moment);
}

/// Carries out one drag.
class Dragging
{
public:
    Dragging(const WeekDrag &drag, const WeekPoint &pointer, int step, const UserCalendar &calendar)
        : m_drag(drag), m_pointer(pointer), m_step(step), m_calendar(calendar), m_day(calendar.day(drag.times.start))
    {
    }

    [[nodiscard]] FormTimes moved() const
    {
        const FormTimes &times = m_drag.times;
        const int former = m_calendar.minuteOfDay(times.start);
        const int minute = steppedFrom(former, m_drag.lastMinute - leastMinutes);
        const qint64 days = m_drag.pressed.day.daysTo(m_pointer.day);
        if (minute == former)
            return movedTimes(times, static_cast<int>(days), 0, m_calendar);
        const Instant start = at(m_day.addDays(days), minute, m_calendar);
        return {start, start.plus(times.end.seconds - times.start.seconds)};
    }

    [[nodiscard]] FormTimes withStart() const
    {
        const FormTimes &times = m_drag.times;
        const int former = m_calendar.minuteOfDay(times.start);
        const int minute = steppedFrom(former, m_drag.lastMinute - leastMinutes);
        if (minute == former)
            return times;
        return {std::min(at(m_day, minute, m_calendar), times.end.plus(-leastScheduleSeconds)), times.end};
    }

    [[nodiscard]] FormTimes withEnd() const
    {
        const FormTimes &times = m_drag.times;
        // A schedule over midnight may be taken by its end on the day where that is.
        const QDate endDay = m_drag.pressed.day == m_calendar.day(times.end) ? m_drag.pressed.day : m_day;
        const int former = m_calendar.day(times.end) == endDay ? m_calendar.minuteOfDay(times.end) : minutesPerDay;
        const int minute = steppedFrom(former, m_drag.lastMinute);
        if (minute == former)
            return times;
        return {times.start, std::max(at(endDay, minute, m_calendar), times.start.plus(leastScheduleSeconds))};
    }

    [[nodiscard]] FormTimes selected() const
    {
        const QDate day = m_drag.pressed.day;
        const auto [low, high] = std::minmax({inside(m_drag.pressed.minute), inside(m_pointer.minute)});
        // A step that is hardly touched is not meant: who aims at a line is off by a pixel or two.
        const double aim = 0.4 * m_step;
        const int first =
            std::min(static_cast<int>(std::floor((low + aim) / m_step)) * m_step, m_drag.lastMinute - leastMinutes);
        const int last = std::max(static_cast<int>(std::ceil((high - aim) / m_step)) * m_step, first + leastMinutes);
        const Instant start = at(day, first, m_calendar);
        return {start, std::max(at(day, last, m_calendar), start.plus(leastScheduleSeconds))};
    }

private:
    [[nodiscard]] double inside(double minute) const
    {
        return std::clamp<double>(minute, m_drag.firstMinute, m_drag.lastMinute);
    }

    /// A block outside the shown hours is drawn at their edge and taken from there.
    [[nodiscard]] int steppedFrom(int former, int latest) const
    {
        const double way = m_pointer.minute - m_drag.pressed.minute;
        if (std::lround(way / m_step) == 0)
            return former;
        const auto stepped = static_cast<int>(std::lround((inside(former) + way) / m_step)) * m_step;
        return std::clamp(stepped, m_drag.firstMinute, std::max(latest, m_drag.firstMinute));
    }

    const WeekDrag &m_drag;
    const WeekPoint &m_pointer;
    int m_step;
    const UserCalendar &m_calendar;
    QDate m_day;
};

} // namespace

FormTimes draggedTimes(const WeekDrag &drag, const WeekPoint &pointer, int stepMinutes, const UserCalendar &calendar)
{
    const Dragging dragging(drag, pointer, stepMinutes, calendar);
    switch (drag.kind) {
    case WeekDragKind::Move:
        return dragging.moved();
    case WeekDragKind::ResizeStart:
        return dragging.withStart();
    case WeekDragKind::ResizeEnd:
        return dragging.withEnd();
    case WeekDragKind::Select:
        return dragging.selected();
    }
    return drag.times;
}

FormTimes hourAround(const WeekPoint &pointer, int firstMinute, int lastMinute, int stepMinutes,
                     const UserCalendar &calendar)
{
    constexpr int hourMinutes = 60;
    const auto minute = static_cast<int>(std::lround((pointer.minute - hourMinutes / 2.0) / stepMinutes)) * stepMinutes;
    const Instant start =
        at(pointer.day, std::clamp(minute, firstMinute, std::max(lastMinute - hourMinutes, firstMinute)), calendar);
    return {start, start.plus(defaultScheduleSeconds)};
}

QString lengthText(const FormTimes &times, bool isEnglish)
{
    const auto minutes = static_cast<int>((times.end.seconds - times.start.seconds) / 60);
    QStringList parts;
    if (minutes >= 60)
        parts.append((isEnglish ? QStringLiteral("%1 h") : QStringLiteral("%1 小时")).arg(minutes / 60));
    if (minutes % 60 != 0 || parts.isEmpty())
        parts.append((isEnglish ? QStringLiteral("%1 min") : QStringLiteral("%1 分")).arg(minutes % 60));
    return parts.join(u' ');
}

FormTimes movedTimes(const FormTimes &times, int days, int minutes, const UserCalendar &calendar)
{
    const bool areWholeDays = calendar.startOfDay(calendar.day(times.start)) == times.start &&
                              isAllDay({.start = times.start, .end = times.end}, calendar);
    const Instant start = shifted(times.start, days, calendar).plus(minutes * 60);
    if (areWholeDays && minutes == 0)
        return {start, shifted(times.end, days, calendar)};
    return {start, start.plus(times.end.seconds - times.start.seconds)};
}

FormTimes draggedDays(WeekDragKind kind, const FormTimes &times, int days, const UserCalendar &calendar)
{
    if (kind == WeekDragKind::Move)
        return movedTimes(times, days, 0, calendar);
    for (; days != 0; days += days < 0 ? 1 : -1) {
        const FormTimes result = kind == WeekDragKind::ResizeStart
                                     ? FormTimes{shifted(times.start, days, calendar), times.end}
                                     : FormTimes{times.start, shifted(times.end, days, calendar)};
        if (isAllDay({.start = result.start, .end = result.end}, calendar))
            return result;
    }
    return times;
}

} // namespace tessaly

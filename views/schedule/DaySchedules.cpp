#include "views/schedule/DaySchedules.h"

#include "model/DisplayTitle.h"

#include <algorithm>
#include <limits>

namespace tessaly {

namespace {

constexpr double daySeconds = 86400;

DayEvent eventOf(qsizetype row, const ScheduleSource &source)
{
    const ScheduleItem &schedule = source.schedules.at(row);
    return {row, schedule.date, schedule.end()};
}

/// The displayed schedules that touch the range, sorted by start.
QList<DayEvent> touching(const InstantRange &range, const ScheduleSource &source)
{
    QList<DayEvent> events;
    constexpr Instant earliest{-std::numeric_limits<double>::infinity()};
    for (const ScheduleIndex::Entry &entry : source.index.startingIn(earliest, range.to)) {
        const DayEvent event = eventOf(entry.row, source);
        if ((event.end > range.from || event.start >= range.from) &&
            isDisplayed(source.schedules.at(entry.row), source.visibleCalendarIDs))
            events.append(event);
    }
    return events;
}

DaySchedules spread(const QList<QDate> &days, const InstantRange &range, const ScheduleSource &source)
{
    DaySchedules events(days.size());
    for (const DayEvent &event : touching(range, source)) {
        const auto [first, last] = daysOf(event, source.calendar);
        const qint64 begin = std::max<qint64>(0, days.first().daysTo(first));
        const qint64 end = std::min<qint64>(days.size(), days.first().daysTo(last) + 1);
        for (qint64 place = begin; place < end; ++place) {
            const QDate day = days.at(place);
            events[place].append({event.row, day == first ? event.start : source.calendar.startOfDay(day), event.end});
        }
    }
    for (QList<DayEvent> &day : events)
        std::ranges::stable_sort(day, {}, &DayEvent::start);
    return events;
}

} // namespace

QString shownTitle(const ScheduleItem &schedule, const ScheduleSource &source)
{
    const QString title = displayTitle(schedule);
    return source.isDone(schedule) ? QStringLiteral("✓ ") + title : title;
}

QString spokenTick(const ScheduleItem &schedule, const ScheduleSource &source)
{
    if (!source.isDone(schedule))
        return {};
    return source.isEnglish ? QStringLiteral("done") : QStringLiteral("已完成");
}

DaySchedules viewportSchedules(const QList<QDate> &days, const ScheduleSource &source)
{
    DaySchedules events(days.size());
    const std::optional<InstantRange> range = viewport(days, source.calendar);
    if (!range)
        return events;
    if (source.options.hasAllDayRow)
        return spread(days, *range, source);
    // Near a clock change a day may reach a little over its first and last instant: take more, then ask the calendar.
    const auto candidates = source.index.startingIn(range->from.plus(-daySeconds), range->to.plus(daySeconds));
    for (const ScheduleIndex::Entry &entry : candidates) {
        const ScheduleItem &schedule = source.schedules.at(entry.row);
        const qint64 place = days.first().daysTo(source.calendar.day(schedule.date));
        if (place >= 0 && place < days.size() && isInViewport(schedule, *range) &&
            isDisplayed(schedule, source.visibleCalendarIDs))
            events[place].append(eventOf(entry.row, source));
    }
    return events;
}

QList<qsizetype> selectedSchedules(QDate day, const ScheduleSource &source)
{
    QList<qsizetype> rows;
    if (source.options.hasAllDayRow) {
        const DaySchedules events = viewportSchedules({day}, source);
        for (const DayEvent &event : events.first())
            rows.append(event.row);
        return rows;
    }
    const Instant start = source.calendar.startOfDay(day);
    for (const ScheduleIndex::Entry &entry :
         source.index.startingIn(start.plus(-daySeconds), start.plus(2 * daySeconds))) {
        const ScheduleItem &schedule = source.schedules.at(entry.row);
        if (source.calendar.day(schedule.date) == day && isDisplayed(schedule, source.visibleCalendarIDs))
            rows.append(entry.row);
    }
    return rows;
}

WeekSchedules weekSchedules(const QList<QDate> &days, const DaySchedules &events, const ScheduleSource &source,
                            const WeekMeasures &measures)
{
    WeekSchedules week{.columns = events, .hidden = QList<HiddenCount>(days.size())};
    if (source.options.hasAllDayRow) {
        QList<DayEvent> allDay;
        for (QList<DayEvent> &day : week.columns) {
            day.removeIf([&](const DayEvent &piece) {
                const DayEvent whole = eventOf(piece.row, source);
                if (!isAllDay(whole, source.calendar))
                    return false;
                if (std::ranges::find(allDay, piece.row, &DayEvent::row) == allDay.cend())
                    allDay.append(whole);
                return true;
            });
        }
        std::ranges::stable_sort(allDay, {}, &DayEvent::start);
        week.allDay = allDayRow(allDay, days, source.calendar);
    }
    if (!source.options.marksHiddenTimes)
        return week;
    for (qsizetype place = 0; place < days.size(); ++place) {
        HiddenCount &count = week.hidden[place];
        week.columns[place].removeIf([&](const DayEvent &event) {
            const HourSide side = sideOf(minuteSpan(days.at(place), event, source.calendar), measures);
            count.before += side == HourSide::Before ? 1 : 0;
            count.after += side == HourSide::After ? 1 : 0;
            return side != HourSide::Within;
        });
    }
    return week;
}

} // namespace tessaly

#include "views/schedule/ScheduleContents.h"

#include "model/AppLanguage.h"
#include "model/DisplayTitle.h"
#include "model/ScheduleColors.h"

#include <cmath>
#include <cstdlib>
#include <initializer_list>

namespace tessaly {

namespace {

constexpr double daySeconds = 86400;
constexpr qsizetype linesPerCell = 2;

QString fullDate(QDate day, const QLocale &locale)
{
    return locale.toString(day, locale.language() == QLocale::English ? u"dddd, MMMM d, yyyy" : u"yyyy年M月d日 dddd");
}

QString countText(qsizetype count, bool isEnglish)
{
    if (isEnglish)
        return count == 1 ? QStringLiteral("1 schedule") : QStringLiteral("%1 schedules").arg(count);
    return QStringLiteral("%1 个日程").arg(count);
}

QString joined(std::initializer_list<QStringView> parts)
{
    QString text;
    for (const QStringView part : parts) {
        if (!part.isEmpty() && !text.isEmpty())
            text += QLatin1String(", ");
        text += part;
    }
    return text;
}

} // namespace

QList<QList<DayEvent>> viewportSchedules(const QList<QDate> &days, const ScheduleSource &source)
{
    QList<QList<DayEvent>> events(days.size());
    const std::optional<InstantRange> range = viewport(days, source.calendar);
    if (!range)
        return events;
    // Near a clock change a day may reach a little over its first and last instant: take more, then ask the calendar.
    const auto candidates = source.index.startingIn(range->from.plus(-daySeconds), range->to.plus(daySeconds));
    for (const ScheduleIndex::Entry &entry : candidates) {
        const ScheduleItem &schedule = source.schedules.at(entry.row);
        const qint64 place = days.first().daysTo(source.calendar.day(schedule.date));
        if (place >= 0 && place < days.size() && isInViewport(schedule, *range) &&
            isDisplayed(schedule, source.visibleCalendarIDs))
            events[place].append({entry.row, schedule.date, schedule.end()});
    }
    return events;
}

QList<DayRow> dayRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events, const DayMarks &marks,
                      bool isEnglish)
{
    const QLocale locale = interfaceLocale(isEnglish);
    QList<DayRow> rows;
    rows.reserve(days.size());
    for (qsizetype place = 0; place < days.size(); ++place) {
        const QDate day = days.at(place);
        rows.append({.place = static_cast<int>(place),
                     .day = day,
                     .weekday = locale.dayName(day.dayOfWeek(), QLocale::ShortFormat),
                     .number = day.day(),
                     .isToday = day == marks.today,
                     .isFocused = day == marks.focusDay,
                     .isOutside = marks.scope == CalendarScope::Month &&
                                  UserCalendar::monthStart(day) != UserCalendar::monthStart(marks.focusDay),
                     .spokenName = joined({fullDate(day, locale), countText(events.at(place).size(), isEnglish)})});
    }
    return rows;
}

QList<BlockRow> blockRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events, const ScheduleSource &source,
                          const WeekMeasures &measures, double dayWidth, const QUuid &selectedID)
{
    const QLocale locale = interfaceLocale(source.isEnglish);
    QList<BlockRow> rows;
    for (qsizetype dayIndex = 0; dayIndex < days.size(); ++dayIndex) {
        const QList<DayEvent> &dayEvents = events.at(dayIndex);
        const QList<PositionedEvent> positioned = positionedEvents(dayEvents);
        const QString dayText = fullDate(days.at(dayIndex), locale);
        for (qsizetype index = 0; index < positioned.size(); ++index) {
            const DayEvent &event = dayEvents.at(index);
            const ScheduleItem &schedule = source.schedules.at(event.row);
            const MinuteSpan span = minuteSpan(days.at(dayIndex), event, source.calendar);
            const QRectF frame = blockFrame(span, positioned.at(index), measures, dayWidth);
            BlockRow row{.id = schedule.id,
                         .dayIndex = static_cast<int>(dayIndex),
                         .x = frame.x(),
                         .y = frame.y(),
                         .width = frame.width(),
                         .height = frame.height(),
                         .startMinute = span.start,
                         .title = displayTitle(schedule),
                         .startText = timeRangeText(event.start, std::nullopt, source.calendar),
                         .timeRange = timeRangeText(event.start, event.end, source.calendar),
                         .tag = schedule.tag.value_or(QString()),
                         .colorKey = scheduleColor(schedule),
                         .isSelected = schedule.id == selectedID};
            row.spokenName = joined({dayText, row.title, row.timeRange, row.tag});
            rows.append(row);
        }
    }
    return rows;
}

QList<MonthLineRow> monthLineRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events,
                                  const ScheduleSource &source, QDate focusDay)
{
    QList<MonthLineRow> rows;
    for (qsizetype cell = 0; cell < days.size(); ++cell) {
        const bool isOutside = UserCalendar::monthStart(days.at(cell)) != UserCalendar::monthStart(focusDay);
        const QList<DayEvent> &dayEvents = events.at(cell);
        for (qsizetype slot = 0; slot < std::min(dayEvents.size(), linesPerCell); ++slot) {
            const DayEvent &event = dayEvents.at(slot);
            const ScheduleItem &schedule = source.schedules.at(event.row);
            rows.append({.id = schedule.id,
                         .cellIndex = static_cast<int>(cell),
                         .slot = static_cast<int>(slot),
                         .title = displayTitle(schedule),
                         .startText = timeRangeText(event.start, std::nullopt, source.calendar),
                         .colorKey = scheduleColor(schedule),
                         .isOutside = isOutside,
                         .spokenName = joined({displayTitle(schedule),
                                               timeRangeText(event.start, schedule.endDate, source.calendar),
                                               schedule.tag.value_or(QString())})});
        }
    }
    return rows;
}

QList<qsizetype> selectedSchedules(QDate day, const ScheduleSource &source)
{
    QList<qsizetype> rows;
    const Instant start = source.calendar.startOfDay(day);
    for (const ScheduleIndex::Entry &entry :
         source.index.startingIn(start.plus(-daySeconds), start.plus(2 * daySeconds))) {
        const ScheduleItem &schedule = source.schedules.at(entry.row);
        if (source.calendar.day(schedule.date) == day && isDisplayed(schedule, source.visibleCalendarIDs))
            rows.append(entry.row);
    }
    return rows;
}

QList<DayListRow> dayListRows(QDate day, const ScheduleSource &source)
{
    QList<DayListRow> rows;
    for (const qsizetype row : selectedSchedules(day, source)) {
        const ScheduleItem &schedule = source.schedules.at(row);
        rows.append({.id = schedule.id,
                     .title = displayTitle(schedule),
                     .timeRange = timeRangeText(schedule.date, schedule.endDate, source.calendar),
                     .tag = schedule.tag.value_or(QString()),
                     .colorKey = scheduleColor(schedule)});
    }
    return rows;
}

qsizetype neighbourInDay(const QList<BlockRow> &blocks, qsizetype row, int step)
{
    const qsizetype next = row + step;
    const bool isSameDay = next >= 0 && next < blocks.size() && blocks.at(next).dayIndex == blocks.at(row).dayIndex;
    return isSameDay ? next : row;
}

qsizetype neighbourDay(const QList<BlockRow> &blocks, qsizetype row, int step)
{
    const BlockRow &from = blocks.at(row);
    qsizetype next = row;
    while (next >= 0 && next < blocks.size() && blocks.at(next).dayIndex == from.dayIndex)
        next += step;
    if (next < 0 || next >= blocks.size())
        return row;
    const auto distance = [&](qsizetype index) { return std::abs(blocks.at(index).startMinute - from.startMinute); };
    const int day = blocks.at(next).dayIndex;
    qsizetype nearest = next;
    for (; next >= 0 && next < blocks.size() && blocks.at(next).dayIndex == day; next += step) {
        if (distance(next) < distance(nearest))
            nearest = next;
    }
    return nearest;
}

} // namespace tessaly

#include "views/schedule/ScheduleContents.h"

#include "model/AppLanguage.h"
#include "model/ChineseCalendar.h"
#include "model/DisplayTitle.h"
#include "model/ScheduleColors.h"
#include "views/schedule/AllDayRows.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>

namespace tessaly {

namespace {

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

QString moreText(qsizetype count, bool isEnglish)
{
    return (isEnglish ? QStringLiteral("%1 more") : QStringLiteral("还有 %1 项")).arg(count);
}

QString spokenMoreText(qsizetype count, QDate day, bool isEnglish)
{
    return (isEnglish ? QStringLiteral("%1 more on %2") : QStringLiteral("另有 %1 项，%2"))
        .arg(QString::number(count), shortDate(day, isEnglish));
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

QRect wholeFrame(const QRectF &frame, qsizetype dayIndex, double dayWidth)
{
    const auto whole = [](double length) { return static_cast<int>(std::floor(length + 0.5)); };
    const double left = static_cast<double>(dayIndex) * (dayWidth + 1) + frame.x();
    const QPoint corner(whole(left), whole(frame.y()));
    const QPoint end(whole(left + frame.width()), whole(frame.y() + frame.height()));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y())};
}

/// What of the time fits beside or under the title.
QString timeInBlock(const QSize &size, const QString &startText, const QString &timeRange)
{
    if (size.height() < 36 || size.width() < 44)
        return {};
    return size.width() < 88 ? startText : timeRange;
}

} // namespace

QList<int> ListWindow::places(int count) const
{
    // Steps of several rows, so that a page that scrolls does not make rows one by one.
    constexpr int step = 8;
    constexpr int around = 10;
    constexpr int least = 16;
    const int begin = std::max(0, std::min((firstInView - around) / step * step, count - least));
    const int end = std::min(count, std::max(((lastInView + around) / step + 1) * step, begin + least));
    QList<int> places;
    for (int place = begin; place < end; ++place)
        places.append(place);
    for (const int place : {0, kept - 1, kept, kept + 1, count - 1}) {
        if (place >= 0 && place < count && (place < begin || place >= end))
            places.append(place);
    }
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

QList<DayRow> dayRows(const QList<QDate> &days, const DaySchedules &events, const DayMarks &marks, bool isEnglish)
{
    const QLocale locale = interfaceLocale(isEnglish);
    QList<DayRow> rows;
    rows.reserve(days.size());
    for (qsizetype place = 0; place < days.size(); ++place) {
        const QDate day = days.at(place);
        const ChineseDay chinese = marks.hasChineseCalendar ? chineseDay(day, isEnglish) : ChineseDay();
        rows.append({.place = static_cast<int>(place),
                     .day = day,
                     .weekday = locale.dayName(day.dayOfWeek(), QLocale::ShortFormat),
                     .number = day.day(),
                     .isToday = day == marks.today,
                     .isFocused = day == marks.focusDay,
                     .isOutside = marks.scope == CalendarScope::Month &&
                                  UserCalendar::monthStart(day) != UserCalendar::monthStart(marks.focusDay),
                     .note = chinese.text,
                     .narrowNote = chinese.narrowText,
                     .isNoteSpecial = chinese.isSpecial,
                     .dayOff = static_cast<int>(chinese.dayOff),
                     .spokenName = joined(
                         {fullDate(day, locale), chinese.spoken, countText(events.at(place).size(), isEnglish)})});
    }
    return rows;
}

QList<BlockRow> blockRows(const QList<QDate> &days, const DaySchedules &events, const ScheduleSource &source,
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
            const bool beginsEarlier = event.start > schedule.date;
            const bool endsLater =
                source.options.hasAllDayRow && daysOf(event, source.calendar).second > days.at(dayIndex);
            // What goes on beyond the shown hours ends with them, rather than being moved to others.
            const bool isPart = beginsEarlier || endsLater || source.options.marksHiddenTimes;
            const QRectF frame =
                blockFrame(isPart ? shownPart(span, measures) : span, positioned.at(index), measures, dayWidth);
            const QString timeRange = timeRangeText(schedule.date, schedule.end(), source.calendar);
            const QString tag = schedule.tag.value_or(QString());
            BlockRow row{.id = schedule.id,
                         .dayIndex = static_cast<int>(dayIndex),
                         .frame = wholeFrame(frame, dayIndex, dayWidth),
                         .startMinute = span.start,
                         .beginsEarlier = beginsEarlier,
                         .endsLater = endsLater,
                         .title = shownTitle(schedule, source),
                         .colorKey = scheduleColor(schedule, source.linkColors),
                         .isSelected = schedule.id == selectedID};
            row.timeShown =
                timeInBlock(row.frame.size(), timeRangeText(schedule.date, std::nullopt, source.calendar), timeRange);
            row.hidesDetail = !tag.isEmpty() || row.timeShown != timeRange;
            row.explanation = row.title + u'\n' + timeRange;
            if (!tag.isEmpty())
                row.explanation += u'\n' + tag;
            row.spokenName = joined({dayText, displayTitle(schedule), timeRange, tag, spokenTick(schedule, source)});
            rows.append(row);
        }
    }
    return rows;
}

QRect fullFrame(const FormTimes &times, const QList<QDate> &days, const WeekMeasures &measures, double dayWidth,
                const UserCalendar &calendar)
{
    const QDate day = calendar.day(times.start);
    const qsizetype place = days.indexOf(day);
    if (place < 0)
        return {};
    const MinuteSpan span = minuteSpan(day, {.start = times.start, .end = times.end}, calendar);
    QRectF frame = blockFrame(span, {}, measures, dayWidth);
    frame.setHeight(std::min(frame.height(), std::max(measures.totalHeight - frame.y(), 0.0)));
    return wholeFrame(frame, place, dayWidth);
}

QList<MonthLineRow> monthLineRows(const QList<QDate> &days, const DaySchedules &events, const ScheduleSource &source,
                                  QDate focusDay)
{
    QList<MonthLineRow> rows;
    const auto isContinued = [&source](const DayEvent &event) {
        return event.start > source.schedules.at(event.row).date;
    };
    const auto isAllDayLine = [&source](const DayEvent &event) {
        return source.options.hasAllDayRow && isAllDay(event, source.calendar);
    };
    for (qsizetype cell = 0; cell < days.size(); ++cell) {
        const bool isOutside = UserCalendar::monthStart(days.at(cell)) != UserCalendar::monthStart(focusDay);
        const QList<DayEvent> &dayEvents = events.at(cell);
        for (qsizetype slot = 0; slot < std::min(dayEvents.size(), linesPerCell); ++slot) {
            const DayEvent &event = dayEvents.at(slot);
            const ScheduleItem &schedule = source.schedules.at(event.row);
            rows.append({.id = schedule.id,
                         .cellIndex = static_cast<int>(cell),
                         .slot = static_cast<int>(slot),
                         .isContinued = isContinued(event),
                         .title = shownTitle(schedule, source),
                         .startText = isContinued(event) || isAllDayLine(event)
                                          ? QString()
                                          : timeRangeText(event.start, std::nullopt, source.calendar),
                         .colorKey = scheduleColor(schedule, source.linkColors),
                         .isOutside = isOutside,
                         .spokenName = joined({displayTitle(schedule), timesText(schedule, source, days.at(cell)),
                                               schedule.tag.value_or(QString()), spokenTick(schedule, source)})});
        }
        if (const qsizetype more = dayEvents.size() - linesPerCell; more > 0)
            rows.append({.id = source.schedules.at(dayEvents.at(linesPerCell).row).id,
                         .cellIndex = static_cast<int>(cell),
                         .slot = static_cast<int>(linesPerCell),
                         .isContinued = isContinued(dayEvents.at(linesPerCell)),
                         .title = moreText(more, source.isEnglish),
                         .isOutside = isOutside,
                         .spokenName = spokenMoreText(more, days.at(cell), source.isEnglish)});
    }
    return rows;
}

QList<DayListRow> dayListRows(const QList<qsizetype> &listed, const ListWindow &window, const ScheduleSource &source,
                              QDate day)
{
    QList<DayListRow> rows;
    for (const int place : window.places(static_cast<int>(listed.size()))) {
        const ScheduleItem &schedule = source.schedules.at(listed.at(place));
        rows.append({.id = schedule.id,
                     .place = place,
                     .title = displayTitle(schedule),
                     .isDone = source.isDone(schedule),
                     .timeRange = timesText(schedule, source, day),
                     .tag = schedule.tag.value_or(QString()),
                     .colorKey = scheduleColor(schedule, source.linkColors)});
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

#include "views/schedule/AllDayRows.h"

#include "model/DisplayTitle.h"

#include <cmath>

namespace tessaly {

namespace {

constexpr double leftMargin = 3;
constexpr double rightMargin = 6;
constexpr int topMargin = 3;
constexpr int lineHeight = 20;
constexpr int lineStep = 22;

AllDayBarRow barRow(const AllDaySpan &span, const ScheduleSource &source, double dayWidth, const QUuid &selectedID)
{
    const ScheduleItem &schedule = source.schedules.at(span.row);
    QStringList spoken{daysText({schedule.date, schedule.end()}, source.calendar, source.isEnglish),
                       displayTitle(schedule)};
    if (const QString tag = schedule.tag.value_or(QString()); !tag.isEmpty())
        spoken.append(tag);
    if (source.isDone(schedule))
        spoken.append(spokenTick(schedule, source));
    return {.id = schedule.id,
            .frame = barFrame(span, dayWidth),
            .firstPlace = span.first,
            .line = span.line,
            .beginsEarlier = span.beginsEarlier,
            .endsLater = span.endsLater,
            .title = shownTitle(schedule, source),
            .colorKey = scheduleColor(schedule, source.linkColors),
            .isSelected = schedule.id == selectedID,
            .spokenName = spoken.join(QStringLiteral(", "))};
}

} // namespace

QList<AllDayBarModel::Role> barRoles()
{
    return {
        {"frame", [](const AllDayBarRow &row) -> QVariant { return QRectF(row.frame); }},
        {"beginsEarlier", [](const AllDayBarRow &row) -> QVariant { return row.beginsEarlier; }},
        {"endsLater", [](const AllDayBarRow &row) -> QVariant { return row.endsLater; }},
        {"title", [](const AllDayBarRow &row) -> QVariant { return row.title; }},
        {"colorKey", [](const AllDayBarRow &row) -> QVariant { return row.colorKey; }},
        {"isSelected", [](const AllDayBarRow &row) -> QVariant { return row.isSelected; }},
        {"spokenName", [](const AllDayBarRow &row) -> QVariant { return row.spokenName; }},
    };
}

QList<AllDayBarRow> barRows(const AllDayRow &row, const ScheduleSource &source, double dayWidth,
                            const QUuid &selectedID)
{
    QList<AllDayBarRow> bars;
    for (const AllDaySpan &span : row.spans)
        bars.append(barRow(span, source, dayWidth, selectedID));
    return bars;
}

QRect barFrame(const AllDaySpan &span, double dayWidth)
{
    const double left = span.first * (dayWidth + 1) + (span.beginsEarlier ? 0 : leftMargin);
    const double right = span.last * (dayWidth + 1) + dayWidth - (span.endsLater ? 0 : rightMargin);
    const auto whole = [](double length) { return static_cast<int>(std::floor(length + 0.5)); };
    return {whole(left), topMargin + span.line * lineStep, whole(right) - whole(left), lineHeight};
}

QString timesText(const ScheduleItem &schedule, const ScheduleSource &source, QDate day)
{
    const DayEvent event{.start = schedule.date, .end = schedule.end()};
    if (!source.options.hasAllDayRow)
        return timeRangeText(schedule.date, schedule.endDate, source.calendar);
    const auto [first, last] = daysOf(event, source.calendar);
    if (!isAllDay(event, source.calendar)) {
        if (first == last)
            return timeRangeText(schedule.date, schedule.endDate, source.calendar);
        const auto text = [&](Instant moment, QDate itsDay) {
            const QString time = timeRangeText(moment, std::nullopt, source.calendar);
            return itsDay == day ? time : shortDate(itsDay, source.isEnglish) + u' ' + time;
        };
        return text(event.start, first) + QStringLiteral(" – ") + text(event.end, last);
    }
    if (first == last)
        return source.isEnglish ? QStringLiteral("all day") : QStringLiteral("全天");
    return daysText({event.start, event.end}, source.calendar, source.isEnglish);
}

QString daysText(const FormTimes &times, const UserCalendar &calendar, bool isEnglish)
{
    const auto [first, last] = daysOf({.start = times.start, .end = times.end}, calendar);
    const QString text = shortDate(first, isEnglish);
    return first == last ? text : text + QStringLiteral(" – ") + shortDate(last, isEnglish);
}

} // namespace tessaly

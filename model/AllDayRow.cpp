#include "model/AllDayRow.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

constexpr double daySeconds = 86400;
constexpr double minuteSeconds = 60;
constexpr int margins = 7;
constexpr int lineHeight = 20;
constexpr int lineGap = 2;
constexpr int restHeight = 18;

} // namespace

bool isAllDay(const DayEvent &event, const UserCalendar &calendar)
{
    if (event.end.seconds - event.start.seconds >= daySeconds)
        return true;
    // A day of a clock change is shorter, and some programs end a day a minute early.
    const QDate startDay = calendar.day(event.start);
    const QDate whole = calendar.startOfDay(startDay) == event.start ? startDay : startDay.addDays(1);
    return event.start <= calendar.startOfDay(whole) &&
           event.end.plus(minuteSeconds) >= calendar.startOfDay(whole.addDays(1));
}

std::pair<QDate, QDate> daysOf(const DayEvent &event, const UserCalendar &calendar)
{
    const QDate first = calendar.day(event.start);
    const QDate last = calendar.day(event.end);
    const bool endsAtMidnight = last > first && calendar.startOfDay(last) == event.end;
    return {first, std::max(first, endsAtMidnight ? last.addDays(-1) : last)};
}

AllDayRow allDayRow(const QList<DayEvent> &sortedEvents, const QList<QDate> &days, const UserCalendar &calendar)
{
    AllDayRow result{.restCounts = QList<int>(days.size(), 0)};
    if (days.isEmpty())
        return result;
    const int lastPlace = static_cast<int>(days.size() - 1);
    for (const DayEvent &event : sortedEvents) {
        const auto [firstDay, lastDay] = daysOf(event, calendar);
        if (lastDay < days.first() || firstDay > days.last())
            continue;
        result.spans.append({.row = event.row,
                             .first = std::max(0, static_cast<int>(days.first().daysTo(firstDay))),
                             .last = std::min(lastPlace, static_cast<int>(days.first().daysTo(lastDay))),
                             .beginsEarlier = (firstDay < days.first()),
                             .endsLater = (lastDay > days.last())});
    }
    std::ranges::stable_sort(result.spans, [](const AllDaySpan &left, const AllDaySpan &right) {
        return left.first != right.first ? left.first < right.first : left.last > right.last;
    });
    // The place after the last one that is taken, for each line.
    std::array<int, mostAllDayLines> free = {};
    for (AllDaySpan &span : result.spans) {
        const auto line = std::ranges::find_if(free, [&span](int place) { return place <= span.first; });
        span.line = static_cast<int>(line - free.begin());
        if (line != free.end()) {
            *line = span.last + 1;
            result.lineCount = std::max(result.lineCount, span.line + 1);
            continue;
        }
        for (int place = span.first; place <= span.last; ++place)
            ++result.restCounts[place];
    }
    result.spans.removeIf([](const AllDaySpan &span) { return span.line == mostAllDayLines; });
    return result;
}

int allDayHeight(const AllDayRow &row)
{
    if (row.lineCount == 0)
        return 0;
    const bool hasRest = std::ranges::any_of(row.restCounts, [](int count) { return count > 0; });
    return margins + row.lineCount * lineHeight + (row.lineCount - 1) * lineGap + (hasRest ? restHeight : 0);
}

} // namespace tessaly

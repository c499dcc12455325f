#include "model/WeekLayout.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <queue>
#include <utility>
#include <vector>

namespace tessaly {

namespace {

constexpr int minutesPerDay = 1440;
constexpr int leastBlockMinutes = 15;
constexpr int latestTapMinute = 1425;
constexpr double leastBlockHeight = 22;
constexpr double leastBlockWidth = 20;
constexpr double dayMargin = 3;
constexpr double blockGap = 3;

/// Hands out the smallest sub-column that no running event occupies.
class Columns
{
public:
    int take(const DayEvent &event)
    {
        while (!m_running.empty() && m_running.top().first <= event.start) {
            m_free.push(m_running.top().second);
            m_running.pop();
        }
        int column = m_count;
        if (m_free.empty()) {
            ++m_count;
        } else {
            column = m_free.top();
            m_free.pop();
        }
        m_running.emplace(event.end, column);
        return column;
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    template <class T>
    using SmallestFirst = std::priority_queue<T, std::vector<T>, std::greater<>>;

    SmallestFirst<std::pair<Instant, int>> m_running;
    SmallestFirst<int> m_free;
    int m_count = 0;
};

} // namespace

WeekMeasures weekMeasures(int startHour, int endHour)
{
    const int hours = endHour - startHour;
    const double hourHeight = std::max(20.0, std::min(42.0, 520.0 / std::max(hours, 1)));
    return {startHour, hourHeight, std::max(hours, 0) * hourHeight};
}

QList<PositionedEvent> positionedEvents(const QList<DayEvent> &sortedEvents)
{
    QList<PositionedEvent> positioned;
    positioned.reserve(sortedEvents.size());
    qsizetype groupBegin = 0;
    Instant groupEnd;
    Columns columns;
    const auto closeGroup = [&] {
        for (qsizetype index = groupBegin; index < positioned.size(); ++index)
            positioned[index].columnCount = columns.count();
        groupBegin = positioned.size();
        columns = Columns();
    };
    for (const DayEvent &event : sortedEvents) {
        const bool isGroupOpen = groupBegin < positioned.size();
        if (isGroupOpen && event.start >= groupEnd)
            closeGroup();
        const bool isFirst = groupBegin == positioned.size();
        groupEnd = isFirst ? event.end : std::max(groupEnd, event.end);
        positioned.append({event.row, columns.take(event), 1});
    }
    closeGroup();
    return positioned;
}

MinuteSpan minuteSpan(QDate day, const DayEvent &event, const UserCalendar &calendar)
{
    const int start = calendar.minuteOfDay(event.start);
    return {start, calendar.day(event.end) == day ? calendar.minuteOfDay(event.end) : minutesPerDay};
}

MinuteSpan shownPart(const MinuteSpan &span, const WeekMeasures &measures)
{
    const int first = measures.startHour * 60;
    const int last =
        std::max(first, first + static_cast<int>(std::lround(measures.totalHeight / measures.hourHeight)) * 60);
    return {std::clamp(span.start, first, last), std::clamp(span.end, first, last)};
}

HourSide sideOf(const MinuteSpan &span, const WeekMeasures &measures)
{
    const int first = measures.startHour * 60;
    const double last = first + measures.totalHeight / measures.hourHeight * 60;
    if (span.start < first && span.end <= first)
        return HourSide::Before;
    return span.start >= last ? HourSide::After : HourSide::Within;
}

QRectF blockFrame(const MinuteSpan &span, const PositionedEvent &event, const WeekMeasures &measures, double dayWidth)
{
    const double pointsPerMinute = measures.hourHeight / 60;
    const double top = std::max(span.start - measures.startHour * 60, 0) * pointsPerMinute;
    const double height =
        std::max(std::max(span.end - span.start, leastBlockMinutes) * pointsPerMinute, leastBlockHeight);
    const double y = std::max(0.0, std::min(top, measures.totalHeight - height));
    const double columnWidth = (dayWidth - 2 * dayMargin) / event.columnCount;
    const double x = dayMargin + event.column * columnWidth;
    return {x, y, std::max(columnWidth - blockGap, leastBlockWidth), height};
}

std::optional<TimePlace> timePlace(Instant instant, const QList<QDate> &days, const WeekMeasures &measures,
                                   const UserCalendar &calendar)
{
    const auto place = static_cast<int>(days.indexOf(calendar.day(instant)));
    const double y = (calendar.minuteOfDay(instant) - measures.startHour * 60) * measures.hourHeight / 60;
    if (place < 0 || y < 0 || y >= measures.totalHeight)
        return std::nullopt;
    return TimePlace{place, y};
}

int tappedMinute(double y, const WeekMeasures &measures)
{
    // Compared before the conversion, so that no value leaves the range of int.
    const double minute = y / measures.hourHeight * 60 + measures.startHour * 60;
    return static_cast<int>(std::clamp(minute, 0.0, static_cast<double>(latestTapMinute)));
}

int roundedMinute(int tappedMinute)
{
    constexpr int quarter = 15;
    return std::min((tappedMinute + quarter / 2) / quarter * quarter, latestTapMinute);
}

} // namespace tessaly

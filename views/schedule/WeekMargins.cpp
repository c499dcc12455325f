#include "views/schedule/WeekMargins.h"

#include "model/AppLanguage.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessaly {

namespace {

constexpr int markHeight = 20;

QList<CountMarkModel::Role> markRoles()
{
    return {
        {"place", [](const CountMarkRow &row) -> QVariant { return row.place; }},
        {"kind", [](const CountMarkRow &row) -> QVariant { return row.kind; }},
        {"countText", [](const CountMarkRow &row) -> QVariant { return row.countText; }},
        {"spokenName", [](const CountMarkRow &row) -> QVariant { return row.spokenName; }},
    };
}

QString spokenMark(CountMarkRow::Kind kind, int count, QDate day, bool isEnglish)
{
    const TextPair above{QStringLiteral("另有 %1 项，%2"), QStringLiteral("%1 more on %2")};
    const TextPair before{QStringLiteral("显示时间之前有 %1 个日程，%2"),
                          count == 1 ? QStringLiteral("%1 schedule before the shown hours on %2")
                                     : QStringLiteral("%1 schedules before the shown hours on %2")};
    const TextPair after{QStringLiteral("显示时间之后有 %1 个日程，%2"),
                         count == 1 ? QStringLiteral("%1 schedule after the shown hours on %2")
                                    : QStringLiteral("%1 schedules after the shown hours on %2")};
    const TextPair &text = kind == CountMarkRow::AboveHours    ? above
                           : kind == CountMarkRow::BeforeHours ? before
                                                               : after;
    return (isEnglish ? text.english : text.chinese).arg(QString::number(count), shortDate(day, isEnglish));
}

} // namespace

WeekMargins::WeekMargins(QObject *parent) : QObject(parent), m_bars(barRoles()), m_marks(markRoles())
{
    connect(&m_drag, &BarDragModel::changed, this, &WeekMargins::updateHeights);
}

void WeekMargins::follow(const WeekSchedules &week, const QList<QDate> &days, const ScheduleSource &source,
                         double dayWidth, const QUuid &selectedID)
{
    m_bars.setRows(barRows(week.allDay, source, dayWidth, selectedID));
    m_drag.follow(days, dayWidth);

    QList<CountMarkRow> marks;
    const auto mark = [&](qsizetype place, CountMarkRow::Kind kind, int count) {
        if (count > 0)
            marks.append({.place = static_cast<int>(place),
                          .kind = kind,
                          .countText = kind == CountMarkRow::AboveHours ? QStringLiteral("+%1").arg(count)
                                                                        : QString::number(count),
                          .spokenName = spokenMark(kind, count, days.at(place), source.isEnglish)});
    };
    for (qsizetype place = 0; place < days.size(); ++place) {
        mark(place, CountMarkRow::AboveHours, week.allDay.restCounts.value(place));
        mark(place, CountMarkRow::BeforeHours, week.hidden.value(place).before);
        mark(place, CountMarkRow::AfterHours, week.hidden.value(place).after);
    }
    m_marks.setRows(marks);

    const bool hasBefore = std::ranges::any_of(week.hidden, [](const HiddenCount &count) { return count.before > 0; });
    const bool hasAfter = std::ranges::any_of(week.hidden, [](const HiddenCount &count) { return count.after > 0; });
    m_needed = {tessaly::allDayHeight(week.allDay), hasBefore ? markHeight : 0, hasAfter ? markHeight : 0};
    updateHeights();
}

void WeekMargins::updateHeights()
{
    Heights heights = m_needed;
    heights.allDay = std::max(heights.allDay, tessaly::allDayHeight({.lineCount = m_drag.lineCount()}));
    if (std::exchange(m_heights, heights) != heights)
        emit heightsChanged();
}

int WeekMargins::moveBar(int row, int days, bool isContinued)
{
    return shift(row, WeekDragKind::Move, days, isContinued);
}

int WeekMargins::resizeBar(int row, int days, bool isContinued)
{
    return shift(row, WeekDragKind::ResizeEnd, days, isContinued);
}

int WeekMargins::shift(int row, WeekDragKind kind, int days, bool isContinued)
{
    const QUuid id = m_bars.rows().value(row).id;
    emit shifted(id, kind, days, isContinued);
    return barOf(id);
}

int WeekMargins::barOf(const QUuid &id) const
{
    const QList<AllDayBarRow> &bars = m_bars.rows();
    const auto found = std::ranges::find(bars, id, &AllDayBarRow::id);
    return found == bars.cend() ? -1 : static_cast<int>(found - bars.cbegin());
}

int WeekMargins::neighbourBar(int row, int placeStep, int lineStep) const
{
    const QList<AllDayBarRow> &bars = m_bars.rows();
    if (row < 0 || row >= bars.size())
        return -1;
    const AllDayBarRow &from = bars.at(row);
    int nearest = row;
    int least = 0;
    for (int index = 0; index < bars.size(); ++index) {
        const int places = bars.at(index).firstPlace - from.firstPlace;
        const int lines = bars.at(index).line - from.line;
        if (placeStep != 0 ? places * placeStep <= 0 : lines * lineStep <= 0)
            continue;
        const int distance =
            placeStep != 0 ? std::abs(places) * 10 + std::abs(lines) : std::abs(lines) * 10 + std::abs(places);
        if (nearest == row || distance < least) {
            nearest = index;
            least = distance;
        }
    }
    return nearest;
}

} // namespace tessaly

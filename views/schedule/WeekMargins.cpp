#include "views/schedule/WeekMargins.h"

#include "model/AppLanguage.h"
#include "model/DisplayTitle.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tessaly {

namespace {

constexpr double leftMargin = 3;
constexpr double rightMargin = 6;
constexpr int topMargin = 3;
constexpr int lineHeight = 20;
constexpr int lineStep = 22;
constexpr int markHeight = 20;

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

QList<CountMarkModel::Role> markRoles()
{
    return {
        {"place", [](const CountMarkRow &row) -> QVariant { return row.place; }},
        {"kind", [](const CountMarkRow &row) -> QVariant { return row.kind; }},
        {"countText", [](const CountMarkRow &row) -> QVariant { return row.countText; }},
        {"spokenName", [](const CountMarkRow &row) -> QVariant { return row.spokenName; }},
    };
}

QRect barFrame(const AllDaySpan &span, double dayWidth)
{
    const double left = span.first * (dayWidth + 1) + (span.beginsEarlier ? 0 : leftMargin);
    const double right = span.last * (dayWidth + 1) + dayWidth - (span.endsLater ? 0 : rightMargin);
    const auto whole = [](double length) { return static_cast<int>(std::floor(length + 0.5)); };
    return {whole(left), topMargin + span.line * lineStep, whole(right) - whole(left), lineHeight};
}

AllDayBarRow barRow(const AllDaySpan &span, const ScheduleSource &source, double dayWidth, const QUuid &selectedID)
{
    const ScheduleItem &schedule = source.schedules.at(span.row);
    const auto [first, last] = daysOf({span.row, schedule.date, schedule.end()}, source.calendar);
    const QString days =
        first == last ? shortDate(first, source.isEnglish)
                      : shortDate(first, source.isEnglish) + QStringLiteral(" – ") + shortDate(last, source.isEnglish);
    QStringList spoken{days, displayTitle(schedule)};
    if (const QString tag = schedule.tag.value_or(QString()); !tag.isEmpty())
        spoken.append(tag);
    return {.id = schedule.id,
            .frame = barFrame(span, dayWidth),
            .firstPlace = span.first,
            .line = span.line,
            .beginsEarlier = span.beginsEarlier,
            .endsLater = span.endsLater,
            .title = displayTitle(schedule),
            .colorKey = scheduleColor(schedule, source.linkColors),
            .isSelected = schedule.id == selectedID,
            .spokenName = spoken.join(QStringLiteral(", "))};
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
}

void WeekMargins::follow(const WeekSchedules &week, const QList<QDate> &days, const ScheduleSource &source,
                         double dayWidth, const QUuid &selectedID)
{
    QList<AllDayBarRow> bars;
    for (const AllDaySpan &span : week.allDay.spans)
        bars.append(barRow(span, source, dayWidth, selectedID));
    m_bars.setRows(bars);

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
    const Heights heights{tessaly::allDayHeight(week.allDay), hasBefore ? markHeight : 0, hasAfter ? markHeight : 0};
    if (std::exchange(m_heights, heights) != heights)
        emit heightsChanged();
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

#include "views/schedule/BarDragModel.h"

#include "store/PlannerStore.h"
#include "store/RecordRows.h"
#include "views/schedule/WeekDragModel.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr double edge = 6;

} // namespace

BarDragModel::BarDragModel(const AllDayBarModel &bars, QObject *parent) : QObject(parent), m_bars(bars)
{
}

void BarDragModel::follow(const QList<QDate> &days, double dayWidth)
{
    m_days = days;
    m_dayWidth = dayWidth;
    if (isActive())
        place();
}

const AllDayBarRow *BarDragModel::barAt(double x, double y) const
{
    const QList<AllDayBarRow> &bars = m_bars.rows();
    const auto found =
        std::ranges::find_if(bars, [&](const AllDayBarRow &bar) { return QRectF(bar.frame).contains(x, y); });
    return found == bars.cend() ? nullptr : &*found;
}

WeekDragKind BarDragModel::kindAt(const AllDayBarRow &bar, double x) const
{
    const QRectF frame = bar.frame;
    // Ends that are not shown cannot be taken.
    if (x >= frame.right() - edge && !bar.endsLater)
        return WeekDragKind::ResizeEnd;
    return x < frame.left() + edge && !bar.beginsEarlier ? WeekDragKind::ResizeStart : WeekDragKind::Move;
}

bool BarDragModel::isEndAt(double x, double y) const
{
    const AllDayBarRow *bar = barAt(x, y);
    return bar && kindAt(*bar, x) != WeekDragKind::Move;
}

QDate BarDragModel::dayAt(double x) const
{
    const double column = std::clamp(std::floor(x / (m_dayWidth + 1)), 0.0, m_days.size() - 1.0);
    return m_days.at(static_cast<qsizetype>(column));
}

bool BarDragModel::begin(double x, double y)
{
    cancel();
    const AllDayBarRow *bar = barAt(x, y);
    const qsizetype row = bar ? rowOf(m_store->schedules(), bar->id) : -1;
    if (row < 0)
        return false;
    const ScheduleItem &schedule = m_store->schedules().at(row);
    if (const QString reason = fixedReason(*m_store, schedule); !reason.isEmpty()) {
        emit refused(reason);
        return false;
    }
    m_kind = kindAt(*bar, x);
    m_pressed = dayAt(x);
    m_former = m_times = {schedule.date, schedule.end()};
    m_bar = *bar;
    place();
    return true;
}

void BarDragModel::place()
{
    const QList<AllDaySpan> spans =
        allDayRow({{.start = m_times.start, .end = m_times.end}}, m_days, m_store->calendar()).spans;
    m_span = spans.isEmpty() ? std::nullopt : std::optional(spans.first());
    if (m_span)
        m_span->line = m_bar->line;
    emit changed();
}

void BarDragModel::moveTo(double x)
{
    if (!m_bar)
        return;
    const auto days = static_cast<int>(m_pressed.daysTo(dayAt(x)));
    const FormTimes times = draggedDays(m_kind, m_former, days, m_store->calendar());
    if (std::exchange(m_times, times) != times)
        place();
}

void BarDragModel::drop()
{
    if (!m_bar)
        return;
    const QUuid id = m_bar->id;
    const FormTimes times = m_times;
    cancel();
    if (times == m_former)
        return;
    reschedule(*m_store, id, times, true);
    emit dropped(m_kind, times);
}

void BarDragModel::cancel()
{
    if (!m_bar)
        return;
    m_bar.reset();
    m_span.reset();
    emit changed();
}

int BarDragModel::row() const
{
    const QList<AllDayBarRow> &bars = m_bars.rows();
    const auto found = m_bar ? std::ranges::find(bars, m_bar->id, &AllDayBarRow::id) : bars.cend();
    return found == bars.cend() ? -1 : static_cast<int>(found - bars.cbegin());
}

QRectF BarDragModel::frame() const
{
    return m_span ? QRectF(barFrame(*m_span, m_dayWidth)) : QRectF();
}

} // namespace tessaly

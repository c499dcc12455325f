#include "views/schedule/WeekDragModel.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleColors.h"
#include "store/PlannedItems.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"
#include "views/schedule/ScheduleContents.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaly {

namespace {

constexpr double edge = 6;
constexpr double leastHeightForBothEdges = 26;

} // namespace

QString fixedReason(PlannerStore &store, const ScheduleItem &schedule)
{
    if (!schedule.calendarIdentifier)
        return {};
    if (isFeedCalendar(*schedule.calendarIdentifier))
        return store.text(QStringLiteral("链接日历中的日程不能移动，它们随链接更新。"),
                          QStringLiteral("Schedules of a linked calendar cannot be moved. They follow the link."));
    const QList<CalendarOption> &calendars = store.calendarSync()->availableCalendars();
    const auto found = std::ranges::find(calendars, *schedule.calendarIdentifier, &CalendarOption::id);
    if (found == calendars.cend() || found->isWritable)
        return {};
    return store
        .text(QStringLiteral("日历“%1”是只读的，其中的日程不能移动。"),
              QStringLiteral("The calendar “%1” is read-only. Its schedules cannot be moved."))
        .arg(found->title);
}

void reschedule(PlannerStore &store, const QUuid &id, const FormTimes &times, bool isReported)
{
    const qsizetype row = rowOf(store.schedules(), id);
    if (row < 0)
        return;
    const ScheduleItem &before = store.schedules().at(row);
    // Whole days may be longer where the clock changes.
    const bool isMoved = before.date != times.start && before.end() != times.end;
    ScheduleItem after = before;
    after.date = times.start;
    if (before.endDate || !isMoved)
        after.endDate = times.end;
    const QString title = displayTitle(before);
    const TextPair report{QStringLiteral("已移动“%1”").arg(title), QStringLiteral("Moved “%1”").arg(title)};
    const TextPair name = isMoved ? TextPair{QStringLiteral("移动日程"), QStringLiteral("Move schedule")}
                                  : TextPair{QStringLiteral("调整日程时长"), QStringLiteral("Resize schedule")};
    store.perform({.schedules = {editOf(before, after, row)}}, name, isReported && isMoved ? report : TextPair());
}

WeekDragModel::WeekDragModel(const BlockModel &blocks, QObject *parent) : QObject(parent), m_blocks(blocks)
{
}

void WeekDragModel::follow(const QList<QDate> &days, const WeekMeasures &measures, double dayWidth)
{
    m_days = days;
    m_measures = measures;
    m_dayWidth = dayWidth;
    if (isActive())
        emit changed();
}

qsizetype WeekDragModel::rowAt(QPointF point) const
{
    // Later blocks lie above earlier ones.
    const QList<BlockRow> &rows = m_blocks.rows();
    for (qsizetype row = rows.size() - 1; row >= 0; --row) {
        if (QRectF(rows.at(row).frame).contains(point))
            return row;
    }
    return -1;
}

WeekDragModel::Hold WeekDragModel::holdAt(double x, double y) const
{
    const qsizetype row = rowAt({x, y});
    if (row < 0)
        return Hold::Empty;
    const QRectF frame = m_blocks.rows().at(row).frame;
    // The ends of a part of a schedule over midnight are not those of the schedule.
    if (y >= frame.bottom() - edge && !m_blocks.rows().at(row).endsLater)
        return Hold::Bottom;
    const bool isTop = y < frame.top() + edge && frame.height() >= leastHeightForBothEdges;
    return isTop && !m_blocks.rows().at(row).beginsEarlier ? Hold::Top : Hold::Block;
}

WeekPoint WeekDragModel::weekPoint(QPointF point) const
{
    const double column = std::clamp(std::floor(point.x() / (m_dayWidth + 1)), 0.0, m_days.size() - 1.0);
    return {m_days.at(static_cast<qsizetype>(column)),
            m_measures.startHour * 60 + point.y() / m_measures.hourHeight * 60};
}

WeekDragKind WeekDragModel::kind() const
{
    switch (m_hold) {
    case Hold::Block:
    case Hold::Item:
        return WeekDragKind::Move;
    case Hold::Top:
        return WeekDragKind::ResizeStart;
    case Hold::Bottom:
        return WeekDragKind::ResizeEnd;
    case Hold::Empty:
        break;
    }
    return WeekDragKind::Select;
}

WeekDrag WeekDragModel::dragFrom(const WeekPoint &pressed) const
{
    const auto hours = static_cast<int>(std::lround(m_measures.totalHeight / m_measures.hourHeight));
    return {.kind = kind(),
            .pressed = pressed,
            .firstMinute = m_measures.startHour * 60,
            .lastMinute = (m_measures.startHour + hours) * 60};
}

void WeekDragModel::beginItem(const QString &itemId, const QString &title)
{
    cancel();
    if (m_days.isEmpty() || m_measures.totalHeight <= 0)
        return;
    m_hold = Hold::Item;
    m_isOutside = true;
    m_row = {.id = QUuid(itemId), .title = title, .colorKey = scheduleColor({}, {})};
    m_drag = dragFrom({m_days.constFirst(), 0});
    emit changed();
}

void WeekDragModel::placeItem(const QString &itemId, const QString &title, double start)
{
    beginItem(itemId, title);
    if (!m_drag)
        return;
    m_isOutside = false;
    m_times = {{start}, Instant{start}.plus(defaultScheduleSeconds)};
    emit changed();
}

void WeekDragModel::leave()
{
    if (m_drag && !std::exchange(m_isOutside, true))
        emit changed();
}

int WeekDragModel::shiftItem(int days, int minutes)
{
    if (m_hold != Hold::Item || !m_drag)
        return 0;
    const UserCalendar &calendar = m_store->calendar();
    FormTimes times = movedTimes(m_times, days, minutes, calendar);
    const auto isHidden = [&] {
        return m_store->weekOptions().hidesWeekend && calendar.day(times.start).dayOfWeek() > Qt::Friday;
    };
    while (days != 0 && isHidden())
        times = movedTimes(times, days, 0, calendar);
    const QDate day = calendar.day(times.start);
    const int minute = calendar.minuteOfDay(times.start);
    const bool isShown =
        minute >= m_drag->firstMinute && minute + 60 <= std::max(m_drag->lastMinute, m_drag->firstMinute + 60);
    if (minutes != 0 && (!isShown || day != calendar.day(m_times.start)))
        return 0;
    m_times = times;
    emit changed();
    return day < m_days.constFirst() ? -1 : day > m_days.constLast() ? 1 : 0;
}

QString WeekDragModel::spokenTimes() const
{
    return m_store->text(QStringLiteral("%1，%2 至 %3"), QStringLiteral("%1, %2 to %3"))
        .arg(planDayText(m_store->calendar().day(m_times.start), m_store->isEnglish()), startText(), endText());
}

QString WeekDragModel::itemId() const
{
    return m_drag && m_hold == Hold::Item ? m_row.id.toString() : QString();
}

double WeekDragModel::itemStart() const
{
    const bool isThere = m_drag && m_hold == Hold::Item && !m_isOutside;
    return isThere ? m_times.start.seconds : std::numeric_limits<double>::quiet_NaN();
}

FormTimes WeekDragModel::timesAt(const WeekPoint &point, int stepMinutes) const
{
    if (m_hold == Hold::Item)
        return hourAround(point, m_drag->firstMinute, m_drag->lastMinute, stepMinutes, m_store->calendar());
    return draggedTimes(*m_drag, point, stepMinutes, m_store->calendar());
}

bool WeekDragModel::begin(double x, double y)
{
    cancel();
    if (m_days.isEmpty() || m_measures.totalHeight <= 0)
        return false;
    m_hold = holdAt(x, y);
    m_row = m_blocks.rows().value(rowAt({x, y}));
    m_isOutside = false;
    WeekDrag drag = dragFrom(weekPoint({x, y}));
    if (m_hold != Hold::Empty) {
        const qsizetype row = rowOf(m_store->schedules(), m_row.id);
        if (row < 0)
            return false;
        const ScheduleItem &schedule = m_store->schedules().at(row);
        if (const QString reason = fixedReason(*m_store, schedule); !reason.isEmpty()) {
            emit refused(reason);
            return false;
        }
        drag.times = {schedule.date, schedule.end()};
    }
    m_drag = drag;
    m_times = draggedTimes(drag, drag.pressed, dragStepMinutes, m_store->calendar());
    emit changed();
    return true;
}

void WeekDragModel::moveTo(double x, double y, bool isFine)
{
    if (!m_drag)
        return;
    const FormTimes times = timesAt(weekPoint({x, y}), isFine ? fineDragStepMinutes : dragStepMinutes);
    const bool hasEntered = std::exchange(m_isOutside, false);
    if (std::exchange(m_times, times) != times || hasEntered)
        emit changed();
}

void WeekDragModel::drop()
{
    if (!m_drag)
        return;
    const FormTimes times = m_times;
    const FormTimes former = m_drag->times;
    const bool isDropped = !m_isOutside;
    cancel();
    if (!isDropped)
        return;
    if (m_hold == Hold::Item)
        planItem(*m_store, m_row.id, times);
    else if (m_hold == Hold::Empty)
        emit spanSelected(times);
    else if (times != former)
        reschedule(*m_store, m_row.id, times, true);
}

void WeekDragModel::cancel()
{
    if (!m_drag)
        return;
    m_drag.reset();
    emit changed();
}

int WeekDragModel::draggedRow() const
{
    const QList<BlockRow> &rows = m_blocks.rows();
    const auto found = std::ranges::find(rows, m_row.id, &BlockRow::id);
    const bool isOfBlock = m_hold != Hold::Empty && m_hold != Hold::Item;
    return m_drag && isOfBlock && found != rows.cend() ? static_cast<int>(found - rows.cbegin()) : -1;
}

QRectF WeekDragModel::frame() const
{
    return m_drag && !m_isOutside ? fullFrame(m_times, m_days, m_measures, m_dayWidth, m_store->calendar()) : QRectF();
}

double WeekDragModel::startY() const
{
    return frame().top();
}

double WeekDragModel::endY() const
{
    return frame().bottom();
}

double WeekDragModel::formerY() const
{
    return m_hold == Hold::Top ? m_row.frame.top() : m_row.frame.top() + m_row.frame.height();
}

QString WeekDragModel::startText() const
{
    return m_drag ? timeRangeText(m_times.start, std::nullopt, m_store->calendar()) : QString();
}

QString WeekDragModel::endText() const
{
    return m_drag ? timeRangeText(m_times.end, std::nullopt, m_store->calendar()) : QString();
}

QString WeekDragModel::lengthText() const
{
    return m_drag ? tessaly::lengthText(m_times, m_store->isEnglish()) : QString();
}

} // namespace tessaly

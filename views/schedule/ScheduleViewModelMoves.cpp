// What ScheduleViewModel does with the schedules that are shown.
#include "views/schedule/ScheduleViewModel.h"

#include <algorithm>

namespace tessaly {

int ScheduleViewModel::moveBlock(int row, int days, int minutes, bool isContinued)
{
    const QUuid id = m_week.contents.rows().value(row).id;
    return moveSchedule(id, days, minutes, isContinued) ? blockOf(id) : -1;
}

bool ScheduleViewModel::moveSchedule(const QUuid &id, int days, int minutes, bool isContinued)
{
    const ScheduleItem *schedule = scheduleWithId(id);
    if (!schedule)
        return false;
    const UserCalendar &calendar = m_store->calendar();
    const QDate day = calendar.day(schedule->date);
    const auto calendarDays = static_cast<int>(day.daysTo(shownDayOn(day, days, m_store->weekOptions())));
    const FormTimes times = movedTimes({schedule->date, schedule->end()}, calendarDays, minutes, calendar);
    if (!rescheduleBlock(*schedule, times, isContinued))
        return false;
    announceDrag(WeekDragKind::Move, times);
    return true;
}

void ScheduleViewModel::shiftDays(const QUuid &id, WeekDragKind kind, int days, bool isContinued)
{
    if (kind == WeekDragKind::Move) {
        moveSchedule(id, days, 0, isContinued);
        return;
    }
    const ScheduleItem *schedule = scheduleWithId(id);
    if (!schedule)
        return;
    const FormTimes former{schedule->date, schedule->end()};
    const FormTimes times = draggedDays(kind, former, days, m_store->calendar());
    if (times != former && rescheduleBlock(*schedule, times, isContinued))
        announceDrag(kind, times);
}

void ScheduleViewModel::announceDrag(WeekDragKind kind, const FormTimes &times)
{
    const UserCalendar &calendar = m_store->calendar();
    const bool isEnglish = m_store->isEnglish();
    const auto [first, last] = daysOf({.start = times.start, .end = times.end}, calendar);
    if (kind == WeekDragKind::ResizeStart) {
        emit announced(m_store->text(QStringLiteral("开始改为 %1"), QStringLiteral("Starts on %1"))
                           .arg(shortDate(first, isEnglish)));
        return;
    }
    if (kind == WeekDragKind::ResizeEnd) {
        emit announced(
            m_store->text(QStringLiteral("结束改为 %1"), QStringLiteral("Ends on %1")).arg(shortDate(last, isEnglish)));
        return;
    }
    if (m_store->weekOptions().hasAllDayRow && isAllDay({.start = times.start, .end = times.end}, calendar)) {
        emit announced(m_store->text(QStringLiteral("移到%1"), QStringLiteral("Moved to %1"))
                           .arg(daysText(times, calendar, isEnglish)));
        return;
    }
    emit announced(m_store->text(QStringLiteral("移到%1，%2 至 %3"), QStringLiteral("Moved to %1, %2 to %3"))
                       .arg(shortDate(calendar.day(times.start), m_store->isEnglish()),
                            timeRangeText(times.start, std::nullopt, calendar),
                            timeRangeText(times.end, std::nullopt, calendar)));
}

int ScheduleViewModel::resizeBlock(int row, int minutes, bool isContinued)
{
    const ScheduleItem *schedule = scheduleWithId(m_week.contents.rows().value(row).id);
    if (!schedule)
        return -1;
    const FormTimes times{schedule->date,
                          std::max(schedule->end().plus(minutes * 60), schedule->date.plus(leastScheduleSeconds))};
    const QUuid id = schedule->id;
    if (!rescheduleBlock(*schedule, times, isContinued))
        return -1;
    emit announced(m_store->text(QStringLiteral("结束改为 %1"), QStringLiteral("Ends at %1"))
                       .arg(timeRangeText(times.end, std::nullopt, m_store->calendar())));
    return blockOf(id);
}

bool ScheduleViewModel::rescheduleBlock(const ScheduleItem &schedule, const FormTimes &times, bool isContinued)
{
    if (const QString reason = fixedReason(*m_store, schedule); !reason.isEmpty()) {
        emit refused(reason);
        return false;
    }
    const QUuid id = schedule.id;
    // First the week, so that the item with the focus is not removed with its row.
    if (!isShown(m_store->weekOptions().hasAllDayRow ? times : FormTimes{times.start, times.start}))
        setFocusDate(times.start);
    reschedule(*m_store, id, times, false);
    if (isContinued)
        m_store->history().joinLast();
    return true;
}

int ScheduleViewModel::blockOf(const QUuid &id) const
{
    const QList<BlockRow> &rows = m_week.contents.rows();
    const auto found = std::ranges::find(rows, id, &BlockRow::id);
    return found == rows.cend() ? -1 : static_cast<int>(found - rows.cbegin());
}

int ScheduleViewModel::neighbourBlock(int row, int dayStep, int timeStep) const
{
    const QList<BlockRow> &blocks = m_week.contents.rows();
    if (row < 0 || row >= blocks.size())
        return -1;
    return static_cast<int>(dayStep != 0 ? neighbourDay(blocks, row, dayStep) : neighbourInDay(blocks, row, timeStep));
}

void ScheduleViewModel::deleteBlock(int row)
{
    deleteSchedule(m_week.contents.rows().value(row).id);
}

void ScheduleViewModel::deleteSchedule(const QUuid &id)
{
    if (const ScheduleItem *stored = scheduleWithId(id)) {
        const ScheduleItem schedule = *stored;
        m_store->deleteSchedule(schedule);
    }
}

void ScheduleViewModel::deleteListed(int row)
{
    deleteSchedule(m_dayList.rows().value(row).id);
}

} // namespace tessaly

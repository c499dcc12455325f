#pragma once

#include "views/schedule/DaySchedules.h"
#include "views/schedule/ScheduleRows.h"

namespace tessaly {

/// How the day headers and cells are marked.
struct DayMarks
{
    QDate today = {};
    QDate focusDay = {};
    CalendarScope scope = CalendarScope::Week;
    bool hasChineseCalendar = false;
};

/// Which rows of the day list are made: those in view and some around them, the first, the last, and one that is kept
/// with its neighbours, so that the Tab key always finds what is next.
struct ListWindow
{
    int firstInView = 0;
    int lastInView = 0;
    int kept = -1;

    /// In ascending order.
    [[nodiscard]] QList<int> places(int count) const;
    bool operator==(const ListWindow &) const = default;
};

[[nodiscard]] QList<DayRow> dayRows(const QList<QDate> &days, const DaySchedules &events, const DayMarks &marks,
                                    bool isEnglish);
[[nodiscard]] QList<BlockRow> blockRows(const QList<QDate> &days, const DaySchedules &events,
                                        const ScheduleSource &source, const WeekMeasures &measures, double dayWidth,
                                        const QUuid &selectedID);
/// The frame of the times over the full width of their day, as BlockRow::frame; empty when the day is not shown.
[[nodiscard]] QRect fullFrame(const FormTimes &times, const QList<QDate> &days, const WeekMeasures &measures,
                              double dayWidth, const UserCalendar &calendar);
[[nodiscard]] QList<MonthLineRow> monthLineRows(const QList<QDate> &days, const DaySchedules &events,
                                                const ScheduleSource &source, QDate focusDay);
/// `listed` are the day's schedules, as selectedSchedules() gives them.
[[nodiscard]] QList<DayListRow> dayListRows(const QList<qsizetype> &listed, const ListWindow &window,
                                            const ScheduleSource &source, QDate day);

/// The row that an arrow key leads to among blocks ordered by day and time: within the day, or the block nearest in
/// time on the next day that has any. The same row when there is none.
[[nodiscard]] qsizetype neighbourInDay(const QList<BlockRow> &blocks, qsizetype row, int step);
[[nodiscard]] qsizetype neighbourDay(const QList<BlockRow> &blocks, qsizetype row, int step);

} // namespace tessaly

#pragma once

#include "model/ScheduleColors.h"
#include "model/ScheduleIndex.h"
#include "model/ScheduleRules.h"
#include "model/WeekLayout.h"
#include "views/schedule/ScheduleRows.h"

namespace tessaly {

/// What the rows of the schedule screen are made from.
struct ScheduleSource
{
    const QList<ScheduleItem> &schedules;
    const ScheduleIndex &index;
    const QSet<QString> &visibleCalendarIDs;
    const UserCalendar &calendar;
    bool isEnglish = false;
    LinkColors linkColors = {};
};

/// How the day headers and cells are marked.
struct DayMarks
{
    QDate today = {};
    QDate focusDay = {};
    CalendarScope scope = CalendarScope::Week;
};

/// The displayed schedules in view by the day of their start, for each of the consecutive days, sorted by start.
[[nodiscard]] QList<QList<DayEvent>> viewportSchedules(const QList<QDate> &days, const ScheduleSource &source);

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

[[nodiscard]] QList<DayRow> dayRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events,
                                    const DayMarks &marks, bool isEnglish);
[[nodiscard]] QList<BlockRow> blockRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events,
                                        const ScheduleSource &source, const WeekMeasures &measures, double dayWidth,
                                        const QUuid &selectedID);
/// The frame of the times over the full width of their day, as BlockRow::frame; empty when the day is not shown.
[[nodiscard]] QRect fullFrame(const FormTimes &times, const QList<QDate> &days, const WeekMeasures &measures,
                              double dayWidth, const UserCalendar &calendar);
[[nodiscard]] QList<MonthLineRow> monthLineRows(const QList<QDate> &days, const QList<QList<DayEvent>> &events,
                                                const ScheduleSource &source, QDate focusDay);
/// Rows of the displayed schedules that start on the day, sorted by start.
[[nodiscard]] QList<qsizetype> selectedSchedules(QDate day, const ScheduleSource &source);
/// `listed` are the day's schedules, as selectedSchedules() gives them.
[[nodiscard]] QList<DayListRow> dayListRows(const QList<qsizetype> &listed, const ListWindow &window,
                                            const ScheduleSource &source);

/// The row that an arrow key leads to among blocks ordered by day and time: within the day, or the block nearest in
/// time on the next day that has any. The same row when there is none.
[[nodiscard]] qsizetype neighbourInDay(const QList<BlockRow> &blocks, qsizetype row, int step);
[[nodiscard]] qsizetype neighbourDay(const QList<BlockRow> &blocks, qsizetype row, int step);

} // namespace tessaly

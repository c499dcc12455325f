#pragma once

#include "model/AllDayRow.h"
#include "model/ScheduleColors.h"
#include "model/ScheduleIndex.h"
#include "model/ScheduleRules.h"
#include "model/WeekLayout.h"

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
    WeekOptions options = {};
    /// The ids of to-dos and goal tasks that are complete.
    QSet<QUuid> doneItems = {};

    /// Whether the schedule gave time to something that is complete.
    [[nodiscard]] bool isDone(const ScheduleItem &schedule) const
    {
        return schedule.plannedItemID && doneItems.contains(*schedule.plannedItemID);
    }
};

/// The title as it is shown: with a tick when the schedule is done.
[[nodiscard]] QString shownTitle(const ScheduleItem &schedule, const ScheduleSource &source);
/// What a screen reader says of the tick; empty when there is none.
[[nodiscard]] QString spokenTick(const ScheduleItem &schedule, const ScheduleSource &source);

/// For each of some consecutive days its schedules, sorted by start. One that began on a day before starts with the
/// day.
using DaySchedules = QList<QList<DayEvent>>;

/// The displayed schedules in view by the day of their start. With an all-day row, on each of their days.
[[nodiscard]] DaySchedules viewportSchedules(const QList<QDate> &days, const ScheduleSource &source);

/// Rows of the displayed schedules that start on the day, sorted by start; with an all-day row, of all that touch it.
[[nodiscard]] QList<qsizetype> selectedSchedules(QDate day, const ScheduleSource &source);

/// How many schedules of a day lie outside the shown hours.
struct HiddenCount
{
    int before = 0;
    int after = 0;
};

/// What the week shows where.
struct WeekSchedules
{
    DaySchedules columns = {};
    AllDayRow allDay = {};
    /// One for each day; all 0 unless they are marked.
    QList<HiddenCount> hidden = {};
};

[[nodiscard]] WeekSchedules weekSchedules(const QList<QDate> &days, const DaySchedules &events,
                                          const ScheduleSource &source, const WeekMeasures &measures);

} // namespace tessaly

#pragma once

#include "model/SavedData.h"
#include "model/ScheduleRules.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

/// An open to-do, or an open task of an open goal: what a day can be planned with.
struct PlanItem
{
    QUuid id = {};
    QString title = {};
    /// Of a to-do.
    std::optional<Instant> dueDate = {};
    /// Of a task; empty for a to-do.
    QString goalTitle = {};
    double weight = 0;
    bool isGoalTask = false;

    bool operator==(const PlanItem &) const = default;
};

/// The to-dos by due date, those without one last, then the tasks in the order of the goals.
[[nodiscard]] QList<PlanItem> openPlanItems(const SavedData &data);

/// The to-do or task that a schedule gives time to, as it is now.
struct PlannedItem
{
    QString title = {};
    bool isGoalTask = false;
    bool isComplete = false;

    bool operator==(const PlannedItem &) const = default;
};

/// Nothing when the schedule has no such item, or the item is gone. A task of a completed subgoal or goal is complete.
[[nodiscard]] std::optional<PlannedItem> plannedItem(const ScheduleItem &schedule, const SavedData &data);

/// The items of which plannedItem() would say that they are complete.
[[nodiscard]] QSet<QUuid> completedItems(const SavedData &data);

/// When each item is planned next: the start of the earliest of its schedules that have not ended.
[[nodiscard]] QHash<QUuid, Instant> plannedStarts(const QList<ScheduleItem> &schedules, Instant now);

/// The part of each day that counts, in whole hours, 0 to 24.
struct DayHours
{
    int start = 0;
    int end = 24;

    bool operator==(const DayHours &) const = default;
};

/// How full a day is within its hours, in minutes of real time: on the day of a clock change they are more or fewer.
struct DayLoad
{
    int planned = 0;
    /// What the time that is about to be planned adds; part of `planned`.
    int added = 0;
    int free = 0;

    bool operator==(const DayLoad &) const = default;
};

/// The times of the displayed schedules that touch the day, by start. Those that last all day take no time.
[[nodiscard]] QList<FormTimes> busyTimes(QDate day, const QList<ScheduleItem> &schedules,
                                         const QSet<QString> &visibleCalendarIDs, const UserCalendar &calendar);

/// Time that is busy more than once counts once.
[[nodiscard]] DayLoad dayLoad(QDate day, const DayHours &hours, const QList<FormTimes> &sortedBusy,
                              const std::optional<FormTimes> &added, const UserCalendar &calendar);

/// The first hour of the day, from now on and within its hours, in which nothing is planned. It begins with the
/// hours, where something ends, or at the next quarter of an hour.
[[nodiscard]] std::optional<FormTimes> firstFreeHour(QDate day, const DayHours &hours,
                                                     const QList<FormTimes> &sortedBusy, Instant now,
                                                     const UserCalendar &calendar);

} // namespace tessaly

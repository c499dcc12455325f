#include "model/DayPlan.h"

#include "model/AllDayRow.h"
#include "model/GoalRules.h"
#include "model/ReminderRules.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr double minuteSeconds = 60;
constexpr double quarterSeconds = 900;

/// Calls `visit` with the goal, the subgoal and the task of each task.
template <class Visit>
void forEachTask(const Goal &goal, const Visit &visit)
{
    if (!goal.subgoals)
        return;
    for (const Subgoal &subgoal : *goal.subgoals) {
        if (!subgoal.tasks)
            continue;
        for (const GoalTask &task : *subgoal.tasks)
            visit(subgoal, task);
    }
}

InstantRange shownRange(QDate day, const DayHours &hours, const UserCalendar &calendar)
{
    const auto at = [&](int hour) {
        if (hour <= 0)
            return calendar.startOfDay(day);
        return hour >= 24 ? calendar.startOfDay(day.addDays(1)) : calendar.instant(day, QTime(hour, 0));
    };
    const InstantRange range{at(hours.start), at(hours.end)};
    return {range.from, std::max(range.from, range.to)};
}

/// How much of the range is busy.
double busySeconds(const InstantRange &range, const QList<FormTimes> &sortedBusy)
{
    double seconds = 0;
    Instant reached = range.from;
    for (const FormTimes &times : sortedBusy) {
        const Instant from = std::max(reached, times.start);
        const Instant to = std::min(range.to, times.end);
        if (to <= from)
            continue;
        seconds += to.seconds - from.seconds;
        reached = to;
    }
    return seconds;
}

int wholeMinutes(double seconds)
{
    return static_cast<int>(std::lround(seconds / minuteSeconds));
}

} // namespace

QList<PlanItem> openPlanItems(const SavedData &data)
{
    QList<PlanItem> items;
    for (const qsizetype row : openItems(data.reminders)) {
        const ReminderItem &reminder = data.reminders.at(row);
        items.append({.id = reminder.id, .title = reminder.title, .dueDate = reminder.dueDate});
    }
    std::ranges::stable_sort(items, [](const PlanItem &left, const PlanItem &right) {
        if (!left.dueDate || !right.dueDate)
            return left.dueDate.has_value() && !right.dueDate;
        return *left.dueDate < *right.dueDate;
    });
    for (const qsizetype row : activeGoals(data.goals)) {
        const Goal &goal = data.goals.at(row);
        forEachTask(goal, [&](const Subgoal &subgoal, const GoalTask &task) {
            if (!subgoal.isComplete && !task.isComplete)
                items.append({.id = task.id,
                              .title = task.title,
                              .goalTitle = goal.title,
                              .weight = task.weight,
                              .isGoalTask = true});
        });
    }
    return items;
}

std::optional<PlannedItem> plannedItem(const ScheduleItem &schedule, const SavedData &data)
{
    if (!schedule.plannedItemID)
        return std::nullopt;
    const QUuid id = *schedule.plannedItemID;
    const auto reminder = std::ranges::find(data.reminders, id, &ReminderItem::id);
    if (reminder != data.reminders.cend())
        return PlannedItem{.title = reminder->title, .isComplete = reminder->isComplete};
    std::optional<PlannedItem> found;
    for (const Goal &goal : data.goals) {
        forEachTask(goal, [&](const Subgoal &subgoal, const GoalTask &task) {
            if (task.id == id)
                found = {.title = task.title,
                         .isGoalTask = true,
                         .isComplete = task.isComplete || subgoal.isComplete || goal.isComplete};
        });
    }
    return found;
}

QSet<QUuid> completedItems(const SavedData &data)
{
    QSet<QUuid> items;
    for (const ReminderItem &reminder : data.reminders) {
        if (reminder.isComplete)
            items.insert(reminder.id);
    }
    for (const Goal &goal : data.goals) {
        forEachTask(goal, [&](const Subgoal &subgoal, const GoalTask &task) {
            if (task.isComplete || subgoal.isComplete || goal.isComplete)
                items.insert(task.id);
        });
    }
    return items;
}

QHash<QUuid, Instant> plannedStarts(const QList<ScheduleItem> &schedules, Instant now)
{
    QHash<QUuid, Instant> starts;
    for (const ScheduleItem &schedule : schedules) {
        if (!schedule.plannedItemID || schedule.end() <= now)
            continue;
        const auto known = starts.find(*schedule.plannedItemID);
        if (known == starts.end())
            starts.insert(*schedule.plannedItemID, schedule.date);
        else
            *known = std::min(*known, schedule.date);
    }
    return starts;
}

QList<FormTimes> busyTimes(QDate day, const QList<ScheduleItem> &schedules, const QSet<QString> &visibleCalendarIDs,
                           const UserCalendar &calendar)
{
    const InstantRange range = shownRange(day, {}, calendar);
    QList<FormTimes> busy;
    for (const ScheduleItem &schedule : schedules) {
        const FormTimes times{schedule.date, schedule.end()};
        if (times.start < range.to && times.end > range.from && isDisplayed(schedule, visibleCalendarIDs) &&
            !isAllDay({.start = times.start, .end = times.end}, calendar))
            busy.append(times);
    }
    std::ranges::stable_sort(busy, {}, &FormTimes::start);
    return busy;
}

DayLoad dayLoad(QDate day, const DayHours &hours, const QList<FormTimes> &sortedBusy,
                const std::optional<FormTimes> &added, const UserCalendar &calendar)
{
    const InstantRange range = shownRange(day, hours, calendar);
    const int before = wholeMinutes(busySeconds(range, sortedBusy));
    int planned = before;
    if (added) {
        QList<FormTimes> all = sortedBusy;
        all.insert(std::ranges::upper_bound(all, added->start, {}, &FormTimes::start), *added);
        planned = wholeMinutes(busySeconds(range, all));
    }
    return {.planned = planned,
            .added = planned - before,
            .free = wholeMinutes(range.to.seconds - range.from.seconds) - planned};
}

std::optional<FormTimes> firstFreeHour(QDate day, const DayHours &hours, const QList<FormTimes> &sortedBusy,
                                       Instant now, const UserCalendar &calendar)
{
    const InstantRange range = shownRange(day, hours, calendar);
    Instant start = range.from;
    if (now > start) {
        // From the quarters of the clock: there are zones that are not whole quarters from UTC.
        const double sinceMidnight = now.seconds - calendar.startOfDay(day).seconds;
        start = calendar.startOfDay(day).plus(std::ceil(sinceMidnight / quarterSeconds) * quarterSeconds);
    }
    for (const FormTimes &times : sortedBusy) {
        if (times.start.seconds - start.seconds >= defaultScheduleSeconds)
            break;
        start = std::max(start, times.end);
    }
    const Instant end = start.plus(defaultScheduleSeconds);
    return end <= range.to ? std::optional(FormTimes{start, end}) : std::nullopt;
}

} // namespace tessaly

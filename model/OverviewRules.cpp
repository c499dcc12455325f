#include "model/OverviewRules.h"

#include <algorithm>

namespace tessaly {

RemainingDay remainingDay(const QList<ScheduleItem> &schedules, const UserCalendar &calendar, Instant now)
{
    // A schedule still counts at the very instant of its end; timers take milliseconds.
    constexpr double justAfter = 0.001;

    const QDate today = calendar.day(now);
    const Instant midnight = calendar.startOfDay(today);
    const Instant nextMidnight = calendar.startOfDay(today.addDays(1));
    RemainingDay remaining{.validUntil = nextMidnight};
    for (qsizetype row = 0; row < schedules.size(); ++row) {
        const ScheduleItem &schedule = schedules.at(row);
        const Instant end = schedule.endDate.value_or(schedule.date);
        if (schedule.date < midnight || schedule.date >= nextMidnight || end < now)
            continue;
        remaining.upcoming.append(row);
        remaining.validUntil = std::min(remaining.validUntil, end.plus(justAfter));
    }
    std::ranges::stable_sort(remaining.upcoming, {}, [&schedules](qsizetype row) { return schedules.at(row).date; });
    return remaining;
}

QList<TodayEntry> todayEntries(const RemainingDay &remaining, const QList<ScheduleItem> &schedules,
                               const QList<ReminderItem> &reminders, const UserCalendar &calendar, Instant now,
                               qsizetype most)
{
    const QDate today = calendar.day(now);
    const Instant midnight = calendar.startOfDay(today);
    const Instant nextMidnight = calendar.startOfDay(today.addDays(1));
    QList<TodayEntry> entries;
    for (const qsizetype row : remaining.upcoming)
        entries.append({TodayEntry::Kind::Schedule, row, schedules.at(row).date});
    for (qsizetype row = 0; row < reminders.size(); ++row) {
        const ReminderItem &item = reminders.at(row);
        if (!item.isComplete && item.dueDate && *item.dueDate >= midnight && *item.dueDate < nextMidnight)
            entries.append({TodayEntry::Kind::ToDo, row, *item.dueDate});
    }
    std::ranges::stable_sort(entries, {}, &TodayEntry::moment);
    return entries.first(std::min(most, entries.size()));
}

qsizetype activeGoalCount(const QList<Goal> &goals)
{
    return std::ranges::count_if(goals, [](const Goal &goal) { return goal.calculatedProgress() < 1; });
}

} // namespace tessaly

#include "store/PlannedItems.h"

#include "model/DayPlan.h"
#include "model/GoalOperations.h"
#include "model/ReminderRules.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

QUuid planItem(PlannerStore &store, const QUuid &itemID, const FormTimes &times)
{
    const QList<PlanItem> items = openPlanItems(store.data());
    const auto item = std::ranges::find(items, itemID, &PlanItem::id);
    if (item == items.cend())
        return {};
    // A colour of its own, which it also keeps in a calendar.
    const ScheduleItem schedule{.title = item->title,
                                .date = times.start,
                                .endDate = leastEnd(times),
                                .colorName = u"blue"_s,
                                .plannedItemID = itemID};
    const QString time = plannedTimeText(times.start, store);
    store.perform({.schedules = {additionOf(schedule, store.schedules().size())}}, TextPair{u"安排时间"_s, u"Plan"_s},
                  {u"已排在%1"_s.arg(time), u"Planned %1"_s.arg(time)});
    return schedule.id;
}

void togglePlannedItem(PlannerStore &store, const QUuid &itemID)
{
    if (const qsizetype row = rowOf(store.reminders(), itemID); row >= 0) {
        store.updateReminder(toggled(store.reminders().at(row), store.clock().now()));
        return;
    }
    for (Goal goal : store.goals()) {
        for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
            if (!toggleTask(goal, subgoal.id, itemID, store.clock().now()))
                continue;
            store.updateGoal(goal);
            return;
        }
    }
}

QString planDayText(QDate day, bool isEnglish)
{
    return interfaceLocale(isEnglish).toString(day, isEnglish ? u"ddd, MMM d"_s : u"M月d日 ddd"_s);
}

QString plannedTimeText(Instant start, const PlannerStore &store)
{
    const QDate day = store.calendar().day(start);
    const qint64 ahead = store.today().daysTo(day);
    const QString date = ahead >= 0 && ahead < 7 ? interfaceLocale(store.isEnglish()).toString(day, u"ddd"_s)
                                                 : shortDate(day, store.isEnglish());
    return date + u' ' + timeRangeText(start, std::nullopt, store.calendar());
}

} // namespace tessaly

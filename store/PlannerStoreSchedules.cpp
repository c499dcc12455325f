#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

void PlannerStore::addSchedule(const ScheduleItem &item, const std::optional<QString> &calendarIdentifier)
{
    schedulesAssigned(appendRecord(m_data.schedules, item));
    if (!calendarIdentifier)
        return;
    requestCalendarAccess([this, id = item.id, calendar = *calendarIdentifier](const Result<bool> &granted) {
        if (granted && granted.value())
            writeToCalendar(id, calendar);
    });
}

void PlannerStore::updateSchedule(const ScheduleItem &item)
{
    const auto rows = replaceRecord(m_data.schedules, item);
    if (!rows)
        return;
    schedulesAssigned(*rows);
    changeCalendarEvent(item);
}

void PlannerStore::deleteSchedule(const ScheduleItem &item)
{
    if (item.calendarEventIdentifier)
        removeCalendarEvent(*item.calendarEventIdentifier);
    if (const auto rows = removeRecords(m_data.schedules, item.id))
        schedulesAssigned(*rows);
    m_noteDrafts.drop(item.id);
}

void PlannerStore::clearPersonalContent()
{
    // One assignment per list, not per field: saving every record of a large planner four times would take minutes.
    if (!m_data.schedules.isEmpty()) {
        for (ScheduleItem &item : m_data.schedules) {
            item.notes.clear();
            item.taskTitle.reset();
            item.isTaskComplete = false;
            item.tasks = QList<ScheduleTask>();
        }
        schedulesAssigned({RowsChange::Kind::Updated, 0, m_data.schedules.size()});
    }
    m_noteDrafts.dropAll();
    m_data.reminders.clear();
    remindersAssigned({});
    m_data.goals.clear();
    goalsAssigned({});
    setCalendarSyncMessage({QStringLiteral("已清空备注、关联任务、待办与目标。"),
                            QStringLiteral("Notes, linked tasks, to-dos, and goals have been cleared.")});
}

} // namespace tessaly

#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

void PlannerStore::addSchedule(const ScheduleItem &item, const std::optional<QString> &calendarIdentifier)
{
    schedulesAssigned(appendRecord(m_data.schedules, item));
    if (!calendarIdentifier)
        return;
    m_calendarSync.requestCalendarAccess(
        [self = QPointer(this), id = item.id, calendar = *calendarIdentifier](const Result<bool> &granted) {
            if (self && granted && granted.value())
                self->m_calendarSync.createEvent(id, calendar);
        });
}

void PlannerStore::updateSchedule(const ScheduleItem &item)
{
    const auto rows = replaceRecord(m_data.schedules, item);
    if (!rows)
        return;
    schedulesAssigned(*rows);
    m_calendarSync.changeEvent(item);
}

void PlannerStore::editSchedules(const std::function<std::optional<RowsChange>(QList<ScheduleItem> &)> &change)
{
    if (const std::optional<RowsChange> rows = change(m_data.schedules))
        schedulesAssigned(*rows);
}

void PlannerStore::deleteSchedule(const ScheduleItem &item)
{
    m_calendarSync.removeEvent(item);
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
    setCalendarSyncMessage({{QStringLiteral("已清空备注、关联任务、待办与目标。"),
                             QStringLiteral("Notes, linked tasks, to-dos, and goals have been cleared.")}});
}

} // namespace tessaly

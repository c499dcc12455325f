#include "store/PlannerStore.h"
#include "store/RecordRows.h"

namespace tessaly {

namespace {

/// As the schedule is after "Clear".
ScheduleItem emptied(ScheduleItem item)
{
    item.notes.clear();
    item.taskTitle.reset();
    item.isTaskComplete = false;
    item.tasks = QList<ScheduleTask>();
    return item;
}

template <class Record>
QList<RecordChange<Record>> removalOfAll(const QList<Record> &records)
{
    QList<RecordChange<Record>> changes;
    changes.reserve(records.size());
    for (const Record &record : records)
        changes.append(removalOf(record, changes.size()));
    return changes;
}

} // namespace

void PlannerStore::addSchedule(const ScheduleItem &item, const std::optional<QString> &calendarIdentifier)
{
    perform({.schedules = {additionOf(item, m_data.schedules.size())}});
    if (calendarIdentifier)
        createEvent(item.id, *calendarIdentifier);
}

void PlannerStore::updateSchedule(const ScheduleItem &item)
{
    if (const qsizetype row = rowOf(m_data.schedules, item.id); row >= 0)
        perform({.schedules = {editOf(m_data.schedules.at(row), item, row)}});
}

void PlannerStore::editSchedules(const std::function<std::optional<RowsChange>(QList<ScheduleItem> &)> &change)
{
    if (const std::optional<RowsChange> rows = change(m_data.schedules))
        schedulesAssigned(*rows);
}

void PlannerStore::deleteSchedule(const ScheduleItem &item)
{
    // The item may be one of the list.
    const QUuid id = item.id;
    if (const qsizetype row = rowOf(m_data.schedules, id); row >= 0)
        perform({.schedules = {removalOf(m_data.schedules.at(row), row)}});
    m_noteDrafts.drop(id);
}

void PlannerStore::clearPersonalContent()
{
    m_generations.keepBefore(GenerationReason::Clear);
    StateChange change{.reminders = removalOfAll(m_data.reminders), .goals = removalOfAll(m_data.goals)};
    for (qsizetype row = 0; row < m_data.schedules.size(); ++row) {
        const ScheduleItem &item = m_data.schedules.at(row);
        if (ScheduleItem after = emptied(item); after != item)
            change.schedules.append(editOf(item, after, row));
    }
    const TextPair report{QStringLiteral("已清空备注、关联任务、待办与目标。"),
                          QStringLiteral("Notes, linked tasks, to-dos, and goals have been cleared.")};
    perform(change, TextPair{QStringLiteral("清空"), QStringLiteral("Clear")}, report);
    m_noteDrafts.dropAll();
    setCalendarSyncMessage({report});
}

} // namespace tessaly

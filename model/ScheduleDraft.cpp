#include "model/ScheduleDraft.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleRules.h"

namespace tessaly {

namespace {

void resetFields(ScheduleDraft &draft)
{
    draft.title = displayTitle(draft.item);
    draft.startDate = draft.item.date;
    draft.endDate = draft.item.end();
    draft.tag = draft.item.tag.value_or(QString());
    draft.notes = draft.item.notes;
}

} // namespace

ScheduleDraft draftOf(const ScheduleItem &item, NoteMode mode)
{
    ScheduleDraft draft{.item = item, .isEditing = mode == NoteMode::Edit};
    resetFields(draft);
    if (item.tasks)
        draft.tasks = *item.tasks;
    else if (item.taskTitle)
        draft.tasks = {{.title = *item.taskTitle, .isComplete = item.isTaskComplete}};
    return draft;
}

void addTask(ScheduleDraft &draft)
{
    const QString title = draft.newTask.trimmed();
    if (title.isEmpty())
        return;
    draft.tasks.append({.title = title});
    draft.newTask.clear();
}

ScheduleItem editedSchedule(const ScheduleDraft &draft)
{
    ScheduleItem edited = draft.item;
    // A title that was shown and not changed stays as it is stored.
    const QString title = draft.title.trimmed();
    if (!title.isEmpty() && draft.title != displayTitle(draft.item))
        edited.title = title;
    edited.date = draft.startDate;
    edited.endDate = leastEnd({draft.startDate, draft.endDate});
    edited.tag = draft.tag.isEmpty() ? std::nullopt : std::optional(draft.tag);
    edited.notes = draft.notes;
    edited.tasks = draft.tasks;
    edited.taskTitle = std::nullopt;
    edited.isTaskComplete = false;
    return edited;
}

ScheduleItem scheduleWithTasks(const ScheduleDraft &draft)
{
    ScheduleItem changed = draft.item;
    changed.tasks = draft.tasks;
    return changed;
}

void cancelEditing(ScheduleDraft &draft)
{
    resetFields(draft);
    draft.tasks = draft.item.tasks.value_or(QList<ScheduleTask>());
    draft.isEditing = false;
}

} // namespace tessaly

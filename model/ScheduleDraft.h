#pragma once

#include "model/ScheduleItem.h"

#include <QJsonObject>

namespace tessaly {

/// What the note editor holds while it is open. `item` is the schedule as it was when the editor opened; it is not
/// refreshed.
struct ScheduleDraft
{
    ScheduleItem item = {};
    QString notes = {};
    QList<ScheduleTask> tasks = {};
    QString newTask = {};
    QString title = {};
    Instant startDate = {};
    Instant endDate = {};
    QString tag = {};
    std::optional<double> leadMinutes = {};
    /// "#RRGGBB"; absent for the colour that the schedule has without one of its own.
    std::optional<QString> colorHex = {};
    bool isEditing = false;

    bool operator==(const ScheduleDraft &) const = default;
};

enum class NoteMode { View, Edit };

/// The editor's state for a schedule. The single task of early versions becomes the only task of the list unless there
/// is a list already.
[[nodiscard]] ScheduleDraft draftOf(const ScheduleItem &item, NoteMode mode);

/// Appends the trimmed new task and clears its field; a blank one does nothing.
void addTask(ScheduleDraft &draft);

/// The schedule as the edit form describes it: a blank title keeps the old one, the end is at least 15 minutes after
/// the start, an empty tag is none, and the single task of early versions is gone.
[[nodiscard]] ScheduleItem editedSchedule(const ScheduleDraft &draft);
/// Another schedule like it, in no calendar, as it looks.
[[nodiscard]] ScheduleItem duplicateOf(const ScheduleItem &schedule);
/// The schedule as it was, with the draft's tasks.
[[nodiscard]] ScheduleItem scheduleWithTasks(const ScheduleDraft &draft);

/// What was typed, so that it can be restored: the fields that differ from those the editor opened with. Empty when
/// none does.
[[nodiscard]] QJsonObject typedFields(const ScheduleDraft &draft, const ScheduleDraft &opened);
/// Replaces the draft's fields by those of typedFields() and enters edit mode if any of them differs. Ignores what
/// cannot be read.
void takeUpTyped(ScheduleDraft &draft, const QJsonObject &fields);

/// Back to view mode and to the schedule's own values. The task list becomes the schedule's list, empty when it has
/// none: the single task of early versions reappears only when the editor opens again.
void cancelEditing(ScheduleDraft &draft);

} // namespace tessaly

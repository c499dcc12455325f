pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// A schedule for reading: rows of label and value, and its tasks to tick off.
Column {
    id: details

    required property ScheduleNoteModel note

    readonly property string none: Language.text("无", "None")

    spacing: 12
    // One text, because screen readers skip texts of fewer than three words in dialogs.
    Accessible.role: Accessible.StaticText
    Accessible.name: [time.label + ": " + time.value, tag.label + ": " + tag.value, notes.label + ": " + (notes.value || none), tasks.label + ": " + (note?.taskCount || none)].join(Language.text("；", "; "))

    NoteDetail {
        id: time

        label: Language.text("时间", "Time")
        value: details.note?.timeText ?? ""
    }

    NoteDetail {
        id: tag

        label: Language.text("标签", "Tag")
        value: details.note?.savedTag || details.none
    }

    NoteDetail {
        id: notes

        label: Language.text("备注", "Notes")
        value: details.note?.notes ?? ""
    }

    NoteDetail {
        id: planned

        visible: tick.title !== ""
        label: details.note?.isOfGoalTask ? Language.text("目标任务", "Goal task") : Language.text("待办", "To-do")
        value: ""

        NoteTick {
            id: tick

            y: -4
            width: parent.width
            title: details.note?.plannedTitle ?? ""
            isComplete: details.note?.isPlannedComplete ?? false
            onToggled: details.note.togglePlanned()
        }
    }

    NoteDetail {
        id: tasks

        label: Language.text("任务", "Tasks")
        value: details.note?.taskCount > 0 ? "" : details.none

        Column {
            width: parent.width
            y: -4

            Repeater {
                model: details.note?.tasks ?? null

                NoteTick {
                    required property int index

                    width: parent.width
                    onToggled: details.note.toggleTask(index)
                }
            }
        }
    }
}

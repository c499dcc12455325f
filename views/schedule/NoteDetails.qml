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
        id: tasks

        label: Language.text("任务", "Tasks")
        value: details.note?.taskCount > 0 ? "" : details.none

        Column {
            width: parent.width
            y: -4

            Repeater {
                model: details.note?.tasks ?? null

                Item {
                    id: task

                    required property int index
                    required property string title
                    required property bool isComplete

                    width: parent.width
                    height: Math.max(30, text.height + 8)

                    CompletionCircle {
                        id: circle

                        x: -5
                        y: 1
                        isComplete: task.isComplete
                        itemTitle: task.title
                        onClicked: details.note.toggleTask(task.index)
                    }

                    AppText {
                        id: text

                        x: 28
                        y: 4
                        width: parent.width - x
                        isMultiline: true
                        text: task.title
                        color: task.isComplete ? Theme.textTertiary : Theme.text
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}

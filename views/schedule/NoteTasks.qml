pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// The tasks of a schedule for editing, and a field for a new one.
Column {
    id: tasks

    required property ScheduleNoteModel note

    /// The next row's Delete takes the focus, else the previous one's, else the field for a new task.
    function focusAfterDeletion(row: int, reason: int) {
        const next = rows.itemAt(Math.min(row, rows.count - 1)) as NoteTaskItem;
        if (next !== null)
            next.focusDelete(reason);
        else
            newTask.forceActiveFocus(Qt.OtherFocusReason);
    }

    function add() {
        note.addTask();
        newTask.forceActiveFocus(Qt.OtherFocusReason);
    }

    spacing: 8

    Repeater {
        id: rows

        model: tasks.note?.tasks ?? null

        NoteTaskItem {
            width: tasks.width
            onRenamed: title => tasks.note.setTaskTitle(index, title)
            onTicked: isComplete => tasks.note.setTaskComplete(index, isComplete)
            onDeleteRequested: {
                const row = index;
                const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                tasks.note.deleteTask(row);
                tasks.focusAfterDeletion(row, reason);
            }
        }
    }

    Item {
        width: tasks.width
        height: Theme.controlHeight

        AppTextField {
            id: newTask

            width: addButton.x - 10
            placeholderText: Language.text("添加任务", "Add task")
            text: tasks.note?.newTask ?? ""
            keepsReturn: true
            onTextEdited: tasks.note.newTask = text
            onAccepted: tasks.add()
        }

        AppButton {
            id: addButton

            x: parent.width - width
            isRaised: true
            text: Language.text("添加", "Add")
            onClicked: tasks.add()

            PressGuard {
                anchors.fill: parent
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// The fields of a schedule for editing. Long labels wrap; fields never leave their column.
Column {
    id: form

    required property ScheduleNoteModel note
    readonly property Item titleField: nameField

    readonly property string startLabel: Language.text("开始", "Start")
    readonly property string endLabel: Language.text("结束", "End")
    readonly property string leadLabel: Language.text("提醒", "Reminder")

    function focusTitle() {
        nameField.forceActiveFocus(Qt.PopupFocusReason);
        nameField.cursorPosition = nameField.length;
    }

    function save() {
        if (startField.accept() && endField.accept())
            note.save();
    }

    spacing: 12

    NoteFormRow {
        label: Language.text("日程名称", "Name")

        AppTextField {
            id: nameField

            width: parent.width
            text: form.note?.title ?? ""
            Accessible.name: Language.text("日程名称", "Name")
            onTextEdited: form.note.title = text
        }
    }

    NoteFormRow {
        label: Language.text("标签（可选）", "Tag (optional)")

        AppTextField {
            width: parent.width
            text: form.note?.tag ?? ""
            Accessible.name: Language.text("标签（可选）", "Tag (optional)")
            onTextEdited: form.note.tag = text
        }
    }

    NoteFormRow {
        label: form.startLabel

        DateTimeField {
            id: startField

            width: 200
            name: form.startLabel
            value: form.note?.start ?? PlannerStore.now
            now: PlannerStore.now
            firstWeekday: PlannerStore.firstWeekday
            onEdited: value => form.note.start = value
        }
    }

    NoteFormRow {
        label: form.endLabel

        DateTimeField {
            id: endField

            width: 200
            name: form.endLabel
            value: form.note?.end ?? PlannerStore.now
            now: PlannerStore.now
            firstWeekday: PlannerStore.firstWeekday
            onEdited: value => form.note.end = value
        }
    }

    NoteFormRow {
        visible: endNote.text !== ""
        label: ""

        AppText {
            id: endNote

            width: parent.width
            text: form.note?.endNote ?? ""
            token: Theme.caption
            color: Theme.destructive
        }
    }

    NoteFormRow {
        label: form.leadLabel

        AppComboBox {
            width: 200
            isRaised: true
            name: form.leadLabel
            model: form.note?.leadChoices ?? []
            currentIndex: form.note?.leadChoice ?? 0
            // A list in another language resets it.
            onModelChanged: currentIndex = Qt.binding(() => form.note?.leadChoice ?? 0)
            onActivated: index => {
                form.note.leadChoice = index;
                currentIndex = Qt.binding(() => form.note?.leadChoice ?? 0);
            }
        }
    }

    NoteFormRow {
        label: Language.text("颜色", "Color")

        ColorWell {
            readonly property string key: form.note?.colorKey ?? "blue"

            name: Language.text("颜色", "Color")
            hex: key.startsWith("#") ? key : Theme.palette.find(entry => entry[0] === key)[1]
            onEdited: hex => form.note.setColorHex(hex)
        }
    }

    NoteFormRow {
        label: Language.text("备注", "Notes")

        MultilineField {
            id: notesField

            width: parent.width
            textArea.Accessible.name: Language.text("备注", "Notes")
            textArea.onTextChanged: {
                if (form.note && textArea.activeFocus)
                    form.note.notes = text;
            }

            Binding {
                target: notesField
                property: "text"
                value: form.note?.notes ?? ""
                restoreMode: Binding.RestoreNone
            }
        }
    }

    NoteFormRow {
        label: Language.text("任务", "Tasks")

        NoteTasks {
            width: parent.width
            note: form.note
        }
    }
}

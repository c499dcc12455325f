import QtQuick
import Tessaly.Store
import Tessaly.Todos
import Tessaly.Ui

/// The fields of a to-do while it is edited in its row. Return in the title, or Ctrl+Return, is `finished`.
Column {
    id: fields

    required property ReminderEditor editor

    /// A list or calendar of the fields has the focus.
    readonly property bool isPopupShown: dueField.isCalendarShown || picker.isListShown

    signal finished

    function takeFocus() {
        titleField.forceActiveFocus(Qt.OtherFocusReason);
        titleField.selectAll();
    }

    /// Whether the due date is one; a field that holds none takes the focus.
    function accept(): bool {
        return !editor.hasDueDate || dueField.accept();
    }

    function nameOf(field: string): string {
        return field + ", " + editor.formerTitle;
    }

    spacing: 8
    Keys.onPressed: event => {
        const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
        if (!isReturn || !(event.modifiers & Qt.ControlModifier))
            return;
        event.accepted = true;
        finished();
    }

    AppTextField {
        id: titleField

        width: parent.width
        isSmall: true
        leftPadding: 11
        font.pixelSize: Theme.control.size
        name: fields.nameOf(placeholderText)
        placeholderText: Language.text("待办名称", "To-do name")
        text: fields.editor.title
        onTextEdited: fields.editor.title = text
        onAccepted: fields.finished()
    }

    MultilineField {
        width: parent.width
        height: implicitHeight
        minHeight: 48
        placeholder: Language.text("任务具体要求（可选）", "Task requirements (optional)")
        text: fields.editor.requirement
        onTextChanged: fields.editor.requirement = text
        textArea.Accessible.name: fields.nameOf(Language.text("任务具体要求", "Task requirements"))
    }

    Row {
        spacing: 12
        height: Theme.controlHeight

        Toggle {
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("设置截止日期", "Set due date")
            checked: fields.editor.hasDueDate
            Accessible.name: fields.nameOf(text)
            onToggled: fields.editor.hasDueDate = checked
        }

        DateTimeField {
            id: dueField

            visible: fields.editor.hasDueDate
            name: fields.nameOf(Language.text("截止", "Due"))
            value: fields.editor.dueDate
            now: PlannerStore.now
            firstWeekday: PlannerStore.firstWeekday
            onEdited: value => fields.editor.dueDate = value
            onAccepted: fields.finished()
        }
    }

    RepetitionPicker {
        id: picker

        width: parent.width
        visible: fields.editor.hasDueDate
        owner: fields.editor.formerTitle
        options: fields.editor.repetitions
        repetition: fields.editor.repetition
        isAfterCompletion: fields.editor.isAfterCompletion
        nextDateText: fields.editor.nextDateText
        onRepetitionChosen: repetition => fields.editor.repetition = repetition
        onAfterCompletionChosen: isAfterCompletion => fields.editor.isAfterCompletion = isAfterCompletion
        onFinished: fields.finished()
    }
}

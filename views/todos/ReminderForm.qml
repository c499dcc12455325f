import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Todos
import Tessaly.Ui

/// The head of the to-do screen: its title, the add form and the heading of the open to-dos.
Item {
    id: head

    required property real columnX
    required property real columnWidth
    required property ReminderViewModel reminders
    required property MissedReminders missed

    readonly property bool isMissing: missed.count > 0

    function focusTitle() {
        entry.takeFocus();
    }

    function add() {
        if (reminders.hasDueDate && !dueField.accept())
            return;
        reminders.add();
        focusTitle();
    }

    /// What was understood in the title is the due date of this to-do alone.
    function addAsUnderstood() {
        if (reading.label === "") {
            add();
            return;
        }
        reminders.addUnderstood(reading.title, reading.start);
        focusTitle();
    }

    /// Puts what was understood into the fields.
    function takeOver() {
        const [title, due] = [reading.title, reading.start];
        reminders.title = title;
        reminders.hasDueDate = true;
        reminders.dueDate = due;
        focusTitle();
    }

    height: heading.y + heading.height + 11

    PhraseReader {
        id: reading

        store: PlannerStore
        isForToDo: true
        phrase: head.reminders.title
    }

    PageTitle {
        x: head.columnX
        y: Theme.pagePadding
        width: head.columnWidth
        text: Language.text("待办", "To-dos")
    }

    MissedCard {
        id: missedCard

        x: head.columnX
        y: Theme.pagePadding + Theme.pageTitle.line + Theme.pageGap
        width: head.columnWidth
        visible: head.isMissing
        reminders: head.missed
        onFinished: head.focusTitle()
    }

    Entry {
        id: entry

        x: head.columnX
        y: missedCard.y + (head.isMissing ? missedCard.height + Theme.pageGap : 0)
        width: head.columnWidth
        height: line.y + (head.reminders.hasDueDate ? 100 : 58)
        name: Language.text("待办名称", "To-do name")
        placeholder: Language.text("例如：提交周报", "e.g. Submit weekly report")
        text: head.reminders.title
        suggestion: reading.label
        onTextEdited: text => head.reminders.title = text
        onAccepted: head.addAsUnderstood()
        onSuggestionTaken: head.takeOver()
        onSuggestionDismissed: reading.dismiss()
        Keys.onPressed: event => {
            const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
            if (!isReturn || !(event.modifiers & Qt.ControlModifier))
                return;
            event.accepted = true;
            head.addAsUnderstood();
        }

        MultilineField {
            id: requirement

            x: 15
            y: 55
            width: parent.width - 30
            height: implicitHeight
            placeholder: Language.text("任务具体要求（可选）", "Task requirements (optional)")
            text: head.reminders.requirement
            onTextChanged: head.reminders.requirement = text
        }

        Separator {
            id: line

            x: 1
            y: requirement.y + requirement.height + 14
            width: parent.width - 2
        }

        Toggle {
            id: dueToggle

            x: 15
            anchors.verticalCenter: addButton.verticalCenter
            text: Language.text("设置截止日期", "Set due date")
            checked: head.reminders.hasDueDate
            // A date that is set here is the one that is meant.
            onToggled: {
                head.reminders.hasDueDate = checked;
                reading.dismiss();
            }
        }

        LabelledDateTime {
            id: dueField

            x: dueToggle.x + dueToggle.width + 28
            anchors.verticalCenter: addButton.verticalCenter
            visible: head.reminders.hasDueDate
            label: Language.text("截止", "Due")
            value: head.reminders.dueDate
            onEdited: date => {
                head.reminders.dueDate = date;
                reading.dismiss();
            }
            onAccepted: head.addAsUnderstood()
        }

        RepetitionPicker {
            id: repetition

            x: 15
            y: line.y + 58
            width: parent.width - 30
            visible: head.reminders.hasDueDate
            options: head.reminders.repetitions
            repetition: head.reminders.repetition
            isAfterCompletion: head.reminders.isAfterCompletion
            nextDateText: head.reminders.nextDateText
            onRepetitionChosen: repetition => head.reminders.repetition = repetition
            onAfterCompletionChosen: isAfterCompletion => head.reminders.isAfterCompletion = isAfterCompletion
            onFinished: head.addAsUnderstood()
        }

        AppButton {
            id: addButton

            anchors.right: parent.right
            anchors.rightMargin: 15
            y: line.y + 13
            kind: AppButton.Primary
            text: Language.text("添加待办", "Add to-do")
            onClicked: head.addAsUnderstood()

            PressGuard {
                anchors.fill: parent
            }
        }
    }

    HeadingText {
        id: heading

        x: head.columnX
        y: entry.y + entry.height + Theme.pageGap
        width: head.columnWidth
        text: Language.text("未完成", "Open")
    }
}

import QtQuick
import Tessaly.Goals
import Tessaly.Shell
import Tessaly.Ui

/// The head of the goals screen: its title and the form for a new goal.
Item {
    id: head

    required property real columnX
    required property real columnWidth
    required property GoalViewModel goals

    function focusTitle() {
        entry.takeFocus();
    }

    function add() {
        if (goals.hasDueDate && !dueField.accept())
            return;
        goals.add();
        focusTitle();
    }

    height: entry.y + entry.height + Theme.pageGap

    PageTitle {
        x: head.columnX
        y: Theme.pagePadding
        width: head.columnWidth
        text: Language.text("目标", "Goals")
    }

    Entry {
        id: entry

        x: head.columnX
        y: Theme.pagePadding + Theme.pageTitle.line + Theme.pageGap
        width: head.columnWidth
        height: line.y + 58
        name: Language.text("主目标名称", "Main goal name")
        placeholder: Language.text("例如：编写微观经济学教材", "e.g. Write a microeconomics textbook")
        text: head.goals.title
        onTextEdited: text => head.goals.title = text
        onAccepted: head.add()

        AppTextField {
            x: 15
            y: 55
            width: categoryField.x - 12 - x
            placeholderText: Language.text("内容概述（可选）", "Overview (optional)")
            text: head.goals.summary
            onTextEdited: head.goals.summary = text
            onAccepted: head.add()
        }
        AppTextField {
            id: categoryField

            x: parent.width - 15 - width
            y: 55
            width: 190
            placeholderText: Language.text("类别标签（可选）", "Category tag (optional)")
            text: head.goals.category
            onTextEdited: head.goals.category = text
            onAccepted: head.add()
        }

        Separator {
            id: line

            x: 1
            y: 101
            width: parent.width - 2
        }

        Toggle {
            id: dueToggle

            x: 15
            anchors.verticalCenter: addButton.verticalCenter
            text: Language.text("设置截止日期", "Set due date")
            checked: head.goals.hasDueDate
            onToggled: head.goals.hasDueDate = checked
        }

        LabelledDateTime {
            id: dueField

            x: dueToggle.x + dueToggle.width + 28
            anchors.verticalCenter: addButton.verticalCenter
            visible: head.goals.hasDueDate
            isDateOnly: true
            label: Language.text("截止", "Due")
            value: head.goals.targetDate
            onEdited: date => head.goals.targetDate = date
            onAccepted: head.add()
        }

        AppButton {
            id: addButton

            anchors.right: parent.right
            anchors.rightMargin: 15
            y: line.y + 13
            kind: AppButton.Primary
            text: Language.text("新建主目标", "New main goal")
            onClicked: head.add()

            PressGuard {
                anchors.fill: parent
            }
        }
    }
}

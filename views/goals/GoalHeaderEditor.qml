import QtQuick
import Tessaly.Goals
import Tessaly.Shell
import Tessaly.Ui

/// The fields of a goal's head while it is edited. Each edit applies at once; Return in a field is `finished`.
Column {
    id: fields

    required property GoalCardModel card
    required property real titleWidth

    signal finished

    function takeFocus() {
        titleField.forceActiveFocus();
    }

    spacing: 8

    AppTextField {
        id: titleField

        width: Math.min(420, fields.titleWidth)
        Accessible.name: Language.text("总目标", "Main goal")
        font.pixelSize: Theme.heading.size
        font.weight: Theme.heading.weight
        text: fields.card.title
        onTextEdited: fields.card.title = text
        onAccepted: fields.finished()
    }

    Row {
        width: parent.width
        spacing: 12

        AppTextField {
            width: parent.width - categoryField.width - 12
            placeholderText: Language.text("内容概述（可选）", "Overview (optional)")
            name: Language.text("内容概述", "Overview") + ", " + fields.card.title
            text: fields.card.details.summary
            onTextEdited: fields.card.details.summary = text
            onAccepted: fields.finished()
        }
        AppTextField {
            id: categoryField

            width: 190
            placeholderText: Language.text("类别标签（可选）", "Category tag (optional)")
            name: Language.text("类别标签", "Category tag") + ", " + fields.card.title
            text: fields.card.details.category
            onTextEdited: fields.card.details.category = text
            onAccepted: fields.finished()
        }
    }

    Row {
        spacing: 28
        height: Theme.controlHeight

        Toggle {
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("设置截止日期", "Set due date")
            checked: fields.card.details.hasDueDate
            Accessible.name: text + ", " + fields.card.title
            onToggled: fields.card.details.hasDueDate = checked
        }

        LabelledDateTime {
            visible: fields.card.details.hasDueDate
            isDateOnly: true
            label: Language.text("截止", "Due")
            value: fields.card.details.dueDate
            onEdited: date => fields.card.details.dueDate = date
            onAccepted: fields.finished()
        }
    }
}

import QtQuick
import Tessaly.Ui

/// Where a task is added to a subgoal.
Item {
    id: addRow

    required property GoalRowBase row

    function takeFocus() {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    function add() {
        row.card.addTask(row.index);
        takeFocus();
    }

    AppTextField {
        id: field

        x: 49
        y: 6
        width: name.x - 12 - x
        height: Theme.smallControlHeight
        placeholderText: Language.text("添加具体任务", "Add a task")
        text: addRow.row.title
        onTextEdited: addRow.row.card.setRowTitle(addRow.row.index, text)
        onAccepted: addRow.add()
    }
    AppText {
        id: name

        x: slider.x - 10 - width
        anchors.verticalCenter: field.verticalCenter
        text: Language.text("权重", "Weight")
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    AppSlider {
        id: slider

        x: weightLabel.x - 10 - width
        anchors.verticalCenter: field.verticalCenter
        width: 80
        from: 0.1
        to: 10
        stepSize: 0.1
        snapMode: AppSlider.SnapAlways
        name: name.text
        value: addRow.row.weight
        onMoved: addRow.row.card.setRowWeight(addRow.row.index, value)
    }
    AppText {
        id: weightLabel

        x: addButton.x - 10 - width
        anchors.verticalCenter: field.verticalCenter
        width: 26
        text: addRow.row.weightText
        token: Theme.caption
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
    AppButton {
        id: addButton

        x: parent.width - 19 - width
        y: 6
        isSmall: true
        text: Language.text("添加任务", "Add task")
        onClicked: addRow.add()

        PressGuard {
            anchors.fill: parent
        }
    }
}

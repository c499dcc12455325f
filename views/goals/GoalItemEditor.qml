import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// The title of a subgoal or task while it is edited, and a task's weight.
Item {
    id: editor

    required property GoalRowBase row

    readonly property bool isSubgoal: row.part === GoalRow.Subgoal
    /// Before it is edited: names do not change while the user types.
    property string formerTitle

    /// Return was pressed in the title.
    signal finished

    function takeFocus() {
        field.forceActiveFocus();
    }

    Component.onCompleted: formerTitle = row.title

    AppText {
        id: subgoalLabel

        anchors.verticalCenter: parent.verticalCenter
        visible: editor.isSubgoal
        text: Language.text("子目标", "Subgoal")
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    AppTextField {
        id: field

        x: editor.isSubgoal ? subgoalLabel.width + 12 : 0
        width: (editor.isSubgoal ? parent.width : weightLabel.x - 10) - x
        height: parent.height
        name: placeholderText + ", " + editor.formerTitle
        font.weight: editor.isSubgoal ? Font.DemiBold : Font.Normal
        placeholderText: editor.isSubgoal ? Language.text("子目标名称", "Subgoal name") : Language.text("任务", "Task")
        text: editor.row.title
        onTextEdited: editor.row.card.setRowTitle(editor.row.index, text)
        onAccepted: editor.finished()
    }

    AppText {
        id: weightLabel

        x: slider.x - 10 - width
        anchors.verticalCenter: parent.verticalCenter
        visible: !editor.isSubgoal
        text: Language.text("权重", "Weight")
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    AppSlider {
        id: slider

        x: parent.width - width
        anchors.verticalCenter: parent.verticalCenter
        visible: !editor.isSubgoal
        width: 90
        from: 0.1
        to: 10
        stepSize: 0.1
        snapMode: AppSlider.SnapAlways
        name: weightLabel.text + ", " + editor.formerTitle
        value: editor.row.weight
        onMoved: editor.row.card.setRowWeight(editor.row.index, value)
    }
}

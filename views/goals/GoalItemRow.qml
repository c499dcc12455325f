import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// A subgoal's own row, with the heading of its tasks beneath, or a task.
Item {
    id: itemRow

    required property GoalRowBase row

    readonly property GoalCardModel card: row.card
    readonly property bool isSubgoal: row.part === GoalRow.Subgoal
    readonly property bool isActive: hover.hovered || circle.visualFocus || handle.activeFocus
    readonly property real middle: isSubgoal ? 27 : 17
    readonly property real textX: isSubgoal ? 49 : 75
    readonly property real textEnd: (isSubgoal ? rail.handleX - 12 : weightLabel.x - 10)

    function reportPlace() {
        row.draggedTo(middle + handle.offset + row.scrolledBy);
    }

    function endEditing() {
        rail.focusEdit(Qt.TabFocusReason);
        row.card.toggleRowEditing(row.index);
    }

    function focusCircle(reason: int) {
        circle.forceActiveFocus(reason);
    }

    function focusDelete(reason: int) {
        rail.focusDelete(reason);
    }

    Keys.onEscapePressed: event => {
        event.accepted = row.isEditing;
        if (row.isEditing)
            endEditing();
    }

    Connections {
        function onScrolledByChanged() {
            if (handle.isDragged)
                itemRow.reportPlace();
        }

        target: itemRow.row
    }

    HoverHandler {
        id: hover
    }

    Item {
        id: content

        width: parent.width
        height: parent.height
        opacity: handle.isDragged ? Theme.draggedOpacity : 1
        transform: Translate {
            y: handle.isDragged ? handle.offset + itemRow.row.scrolledBy : 0
        }

        PopupFrame {
            x: 12
            y: itemRow.middle - 17
            width: parent.width - 24
            height: 34
            visible: handle.isDragged
        }

        CompletionCircle {
            id: circle

            x: itemRow.isSubgoal ? 13 : 43
            y: itemRow.middle - 14
            size: itemRow.isSubgoal ? 18 : 16
            isComplete: itemRow.row.isComplete
            itemTitle: itemRow.row.title
            onClicked: itemRow.card.toggleRow(itemRow.row.index)
        }

        AppText {
            x: itemRow.textX
            y: itemRow.middle - height / 2
            width: itemRow.textEnd - x
            visible: !itemRow.row.isEditing
            text: itemRow.row.title
            token: itemRow.isSubgoal ? Theme.groupLabel : Theme.control
            color: itemRow.row.isComplete ? Theme.textTertiary : Theme.text
            Accessible.ignored: true

            ElidedTip {}
        }
        Loader {
            id: editor

            x: itemRow.textX
            y: itemRow.middle - 14
            width: itemRow.textEnd - x
            height: 28
            active: itemRow.row.isEditing
            sourceComponent: GoalItemEditor {
                // qmllint disable unqualified
                row: itemRow.row
                onFinished: itemRow.endEditing()
                // qmllint enable unqualified
            }
        }

        AppText {
            id: weightLabel

            x: rail.handleX - 10 - width
            y: itemRow.middle - height / 2
            width: 26
            visible: !itemRow.isSubgoal
            text: itemRow.row.weightText
            token: Theme.caption
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignRight
            Accessible.name: Language.text("权重", "Weight") + " " + text
        }

        GoalHandle {
            id: handle

            x: rail.handleX
            y: itemRow.middle - height / 2
            isRowActive: itemRow.isActive
            itemTitle: itemRow.row.title
            help: itemRow.isSubgoal ? Language.text("拖动调整子目标顺序", "Drag to reorder subgoals") : Language.text("拖动调整任务顺序", "Drag to reorder tasks")
            onMoved: step => {
                if (itemRow.card.moveBy(itemRow.row.index, step))
                    itemRow.row.movedByKey();
            }
            onDragStarted: itemRow.row.dragStarted()
            onDragged: itemRow.reportPlace()
            onDragEnded: isCancelled => itemRow.row.dragEnded(isCancelled)
        }

        GoalRail {
            id: rail

            y: itemRow.middle - height / 2
            itemTitle: itemRow.row.title
            isRowActive: itemRow.isActive
            isEditing: itemRow.row.isEditing
            onEditRequested: {
                itemRow.card.toggleRowEditing(itemRow.row.index);
                if (itemRow.row.isEditing)
                    (editor.item as GoalItemEditor).takeFocus();
            }
            onDeleteRequested: itemRow.row.deleteRequested()
        }
    }

    AppText {
        x: 49
        y: 46
        visible: itemRow.isSubgoal
        text: Language.text("具体任务", "Tasks")
        token: Theme.captionMedium
        color: Theme.textSecondary
        Accessible.role: Accessible.Heading
    }
}

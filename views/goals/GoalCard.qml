pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Goals
import Tessaly.Ui

/// One goal with its subgoals and tasks.
Item {
    id: goalCard

    required property GoalCardModel card
    /// Scrolls while a row is dragged near one of its ends.
    required property ListPage page

    /// Row that is being dragged and the row before which it would land; -1 for none.
    property int draggedRow: -1
    property int targetRow: -1
    property bool canLand: true
    property real pageYAtStart: 0

    signal toggled
    signal deleteRequested

    function focusCircle(reason: int) {
        header.focusCircle(reason);
    }

    function focusDelete(reason: int) {
        header.focusDelete(reason);
    }

    /// The next subgoal's or task's Delete takes the focus, else the previous one's, else the field for a new one.
    function focusPart(id: string) {
        for (let index = 0; index < rowItems.count; ++index) {
            const item = rowItems.itemAt(index) as GoalCardItem;
            if (item.itemId !== id || item.part === GoalRow.AddTask)
                continue;
            // Until then it is where it was.
            rows.forceLayout();
            item.focusCircle(Qt.TabFocusReason);
            page.reveal(item);
            return;
        }
    }

    function removeRow(row: int) {
        const part = (rowItems.itemAt(row) as GoalCardItem).part;
        const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
        card.removeRow(row);
        let next = rowItems.itemAt(row) as GoalCardItem;
        for (let before = row - 1; next?.part !== part && before >= 0; --before) {
            const former = rowItems.itemAt(before) as GoalCardItem;
            if (former.part === part)
                next = former;
            else if (part === GoalRow.Task)
                break;
        }
        if (next && (part === GoalRow.Task || next.part === part))
            next.takeFocus(reason);
        else
            newSubgoal.forceActiveFocus(Qt.OtherFocusReason);
    }

    /// Looks for the row before which the dragged one would land, `y` being a place in the rows.
    function dragTo(y: real) {
        const place = rows.childAt(1, y) as GoalCardItem;
        const top = mapToItem(page.contentItem, 0, 0).y;
        page.driftNear(top + rows.y + y, top, top + height);
        targetRow = place ? card.targetFor(draggedRow, place.index) : -1;
        canLand = targetRow >= 0 || (place !== null && card.isPartOf(place.index, draggedRow));
    }

    function endDrag(isCancelled: bool) {
        const dragged = rowItems.itemAt(draggedRow) as GoalCardItem;
        const target = isCancelled ? -1 : targetRow;
        draggedRow = -1;
        targetRow = -1;
        page.driftSpeed = 0;
        if (dragged && target >= 0)
            card.drop(dragged.itemId, target);
    }

    implicitHeight: header.height + rows.height + 57

    // The cursor of the whole window while a row is dragged.
    MouseArea {
        parent: goalCard.Window.contentItem
        anchors.fill: parent
        z: 1
        visible: goalCard.draggedRow >= 0
        acceptedButtons: Qt.NoButton
        cursorShape: goalCard.canLand ? Qt.ArrowCursor : Qt.ForbiddenCursor
    }

    GoalHeader {
        id: header

        width: parent.width
        card: goalCard.card
        onToggled: goalCard.toggled()
        onDeleteRequested: goalCard.deleteRequested()
    }

    Column {
        id: rows

        y: header.height
        width: parent.width

        Repeater {
            id: rowItems

            model: goalCard.card.rows

            GoalCardItem {
                id: cardRow

                width: rows.width
                card: goalCard.card
                z: goalCard.draggedRow === index ? 1 : 0
                scrolledBy: goalCard.draggedRow === index ? goalCard.page.contentY - goalCard.pageYAtStart : 0
                onDeleteRequested: goalCard.removeRow(index)
                onDragStarted: {
                    goalCard.pageYAtStart = goalCard.page.contentY;
                    goalCard.canLand = true;
                    goalCard.draggedRow = index;
                }
                onDraggedTo: y => goalCard.dragTo(mapToItem(rows, 0, y).y)
                onDragEnded: isCancelled => goalCard.endDrag(isCancelled)
                onMovedByKey: {
                    // Until then it is where it was.
                    rows.forceLayout();
                    goalCard.page.reveal(cardRow);
                }
            }
        }
    }

    Rectangle {
        id: landingLine

        readonly property Item target: goalCard.targetRow < 0 ? null : rowItems.itemAt(goalCard.targetRow)

        visible: target !== null
        x: 18
        y: target ? rows.y + target.y - 1 : 0
        width: parent.width - 36
        height: 2
        radius: 1
        color: Theme.accent
    }

    Separator {
        x: 1
        y: rows.y + rows.height
        width: parent.width - 2
    }
    AppTextField {
        id: newSubgoal

        x: 19
        y: rows.y + rows.height + 13
        width: addSubgoal.x - 10 - x
        placeholderText: Language.text("添加子目标", "Add a subgoal")
        text: goalCard.card.newSubgoal
        onTextEdited: goalCard.card.newSubgoal = text
        onAccepted: goalCard.card.addSubgoal()
    }
    AppButton {
        id: addSubgoal

        x: parent.width - 19 - width
        y: newSubgoal.y
        text: Language.text("添加子目标", "Add subgoal")
        onClicked: {
            goalCard.card.addSubgoal();
            newSubgoal.forceActiveFocus(Qt.OtherFocusReason);
        }

        PressGuard {
            anchors.fill: parent
        }
    }
}

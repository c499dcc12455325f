import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// A dragged line of the month under the pointer, and the day that it would go to.
Item {
    id: ghost

    required property MonthGeometry geometry
    required property MonthGestures gestures
    readonly property MonthDragModel drag: gestures.drag
    readonly property color fullColor: Theme.scheduleColor(drag.colorKey)
    readonly property int column: drag.place % 7

    visible: drag.isActive

    Rectangle {
        x: ghost.geometry.columnLeft(ghost.column) + 3
        y: ghost.geometry.rowTop(ghost.drag.place) + 4
        width: ghost.geometry.columnLeft(ghost.column + 1) - ghost.geometry.columnLeft(ghost.column) - 6
        height: ghost.geometry.cellHeight - 7
        radius: Theme.blockRadius
        color: Theme.transparent
        border.width: 1
        border.color: Theme.accentText
    }

    PopupFrame {
        anchors.fill: label
        radius: Theme.blockRadius
    }

    Rectangle {
        id: label

        x: Math.round(Math.max(0, Math.min(ghost.geometry.width - width, ghost.gestures.at.x - 24)))
        y: Math.round(ghost.gestures.at.y - height / 2)
        width: Math.round(Math.min(200, text.x + text.implicitWidth + 8))
        height: 22
        radius: Theme.blockRadius
        color: Theme.tint(ghost.fullColor, 0.26)
        border.width: 1
        border.color: ghost.fullColor

        ColorMark {
            x: 7
            anchors.verticalCenter: parent.verticalCenter
            size: 7
            color: ghost.fullColor
        }

        LineText {
            id: text

            x: 19
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x - 5
            text: ghost.drag.startText === "" ? ghost.drag.title : ghost.drag.startText + "  " + ghost.drag.title
            token: Theme.caption
        }
    }
}

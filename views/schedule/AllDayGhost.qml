import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// Where the bar under way leads to. A side on which it goes on beyond the week is square.
Item {
    id: ghost

    required property BarDragModel drag
    readonly property color fullColor: Theme.scheduleColor(drag.colorKey)

    visible: drag.isActive && drag.frame.width > 0
    x: drag.frame.x
    y: drag.frame.y
    width: drag.frame.width
    height: drag.frame.height

    PopupFrame {
        anchors.fill: parent
        visible: ghost.drag.isMove
        radius: Theme.blockRadius
    }

    Item {
        anchors.fill: parent
        clip: true

        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: ghost.drag.beginsEarlier ? -Theme.blockRadius : 0
            anchors.rightMargin: ghost.drag.endsLater ? -Theme.blockRadius : 0
            radius: Theme.blockRadius
            color: Theme.tint(ghost.fullColor, 0.26)
            border.width: 1
            border.color: ghost.fullColor
        }

        Rectangle {
            width: 3
            height: parent.height
            radius: ghost.drag.beginsEarlier ? 0 : 1.5
            color: ghost.fullColor
        }

        LineText {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x - 5
            text: ghost.drag.title
            token: Theme.captionMedium
        }

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: ghost.drag.isOfStart ? 5 : parent.width - 5
            width: 3
            height: 12
            radius: 1.5
            visible: !ghost.drag.isMove
            color: ghost.fullColor
        }
    }
}

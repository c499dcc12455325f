import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// What the drag under way leads to: a block at its new time, or the selected span.
Item {
    id: ghost

    required property WeekDragModel drag
    required property WeekGeometry geometry

    readonly property bool isSelection: drag.isSelection
    readonly property bool isResized: !drag.isMove && !isSelection
    readonly property color fullColor: Theme.scheduleColor(drag.colorKey)
    readonly property string shownTime: drag.frame.width < 88 ? drag.startText : drag.startText + " – " + drag.endText

    visible: drag.isActive && drag.frame.width > 0

    Separator {
        x: ghost.geometry.hourColumn
        y: ghost.drag.startY
        width: ghost.drag.frame.x
        visible: !ghost.isSelection
        color: Theme.accentText
        opacity: 0.6
    }

    PopupFrame {
        anchors.fill: block
        visible: ghost.drag.isMove
        radius: Theme.blockRadius
    }

    Rectangle {
        id: block

        x: ghost.geometry.hourColumn + ghost.drag.frame.x
        y: ghost.drag.frame.y
        width: ghost.drag.frame.width
        height: ghost.drag.frame.height
        radius: Theme.blockRadius
        color: ghost.isSelection ? Theme.focusDayHeader : Theme.tint(ghost.fullColor, 0.26)
        border.width: 1
        border.color: ghost.isSelection ? Theme.accentText : ghost.fullColor

        Rectangle {
            width: 3
            height: parent.height
            radius: 1.5
            visible: !ghost.isSelection
            color: ghost.fullColor
        }

        LineText {
            x: 8
            y: parent.height < 26 ? Math.round((parent.height - height) / 2) : 5
            width: parent.width - x - 5
            text: ghost.isSelection ? ghost.shownTime : ghost.drag.title
            token: Theme.blockTitle
        }

        LineText {
            x: 8
            y: 20
            width: parent.width - x - 5
            visible: parent.height >= 36
            text: ghost.isSelection ? ghost.drag.lengthText : ghost.shownTime
            token: Theme.mini
        }

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            y: ghost.drag.isOfTop ? 2 : parent.height - 5
            width: 18
            height: 3
            radius: 1.5
            visible: ghost.isResized
            color: ghost.fullColor
        }
    }

    DashedFrame {
        x: block.x
        y: ghost.drag.formerY
        width: block.width
        height: 1
        visible: ghost.isResized
        color: ghost.fullColor
    }
}

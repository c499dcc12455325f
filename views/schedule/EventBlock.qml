import QtQuick
import Tessaly.Ui

/// A schedule in the week: a tint of its colour, a strip of the full colour, title and time as far as there is room.
PushButton {
    id: block

    required property int index
    required property int dayIndex
    required property real blockX
    required property real blockY
    required property real blockWidth
    required property real blockHeight
    required property string title
    required property string startText
    required property string timeRange
    required property string tag
    required property string colorKey
    required property bool isSelected
    required property string spokenName

    readonly property string explanation: title + "\n" + timeRange + (tag === "" ? "" : "\n" + tag)
    readonly property color fullColor: Theme.scheduleColor(colorKey)
    readonly property color fill: Qt.tint(Theme.tint(fullColor, isSelected ? 0.36 : 0.16), Qt.alpha(Theme.text, down ? 0.08 : hovered ? 0.04 : 0))
    readonly property bool isNarrow: width < 72
    readonly property real textLeft: isNarrow ? 6 : 8
    readonly property real textRight: isNarrow ? 2 : 5
    /// Whether something about the schedule is not to be seen.
    readonly property bool hidesText: tag !== "" || timeShown !== timeRange || titleText.implicitWidth > titleText.width || timeText.implicitWidth > timeText.width
    readonly property string timeShown: height < 36 || width < 44 ? "" : width < 88 ? startText : timeRange

    Accessible.name: spokenName
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: Rectangle {
        radius: Theme.blockRadius
        color: block.fill
        border.width: block.isSelected ? 2 : 0
        border.color: block.fullColor
        transform: PixelSnap {}

        // Sets it off from a block that it touches or covers.
        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.margins: -1
            radius: Theme.blockRadius + 1
            color: Theme.card
        }

        Rectangle {
            width: 2 * radius
            height: parent.height
            radius: Theme.blockRadius
            color: block.fullColor
        }

        // Leaves three pixels of the strip; the rounding it cuts off at the corners is less than half a pixel.
        Rectangle {
            x: 3
            y: block.isSelected ? 2 : 0
            width: 2 * Theme.blockRadius - x
            height: parent.height - 2 * y
            color: block.fill
        }

        FocusRing {
            visible: block.visualFocus
            targetRadius: Theme.blockRadius
            gap: -1
        }
    }

    contentItem: Item {
        visible: block.width >= 18
        clip: block.isNarrow

        AppText {
            id: titleText

            x: block.textLeft
            y: block.height < 26 ? Math.round((block.height - height) / 2) : 5
            width: parent.width - x - block.textRight
            text: block.title
            color: block.isSelected ? Theme.blockTextSelected : Theme.text
            token: Theme.blockTitle
            elide: block.isNarrow ? Text.ElideNone : Text.ElideRight
            Accessible.ignored: true
        }

        AppText {
            id: timeText

            anchors.top: titleText.bottom
            x: block.textLeft
            width: titleText.width
            visible: text !== ""
            text: block.timeShown
            color: block.isSelected ? Theme.blockTextSelected : Theme.textSecondary
            token: Theme.mini
            elide: titleText.elide
            Accessible.ignored: true
        }

        FadingEdge {
            visible: block.isNarrow
            anchors.right: parent.right
            anchors.rightMargin: block.isSelected ? 2 : 0
            y: titleText.y
            height: titleText.height + (block.timeShown === "" ? 0 : 13)
            solidWidth: block.textRight - anchors.rightMargin
            fill: block.fill
        }
    }
}

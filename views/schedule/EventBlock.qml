import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// A schedule in the week: a tint of its colour, a strip of the full colour, title and time as far as there is room.
/// There are hundreds of them in a full week: everything in it counts.
PushButton {
    id: block

    required property int index
    required property rect frame
    required property string title
    required property string timeShown
    required property string explanation
    required property bool hidesDetail
    required property string colorKey
    required property bool isSelected
    required property string spokenName

    readonly property color fullColor: Theme.scheduleColor(colorKey)
    readonly property color fill: Qt.tint(Theme.tint(fullColor, isSelected ? 0.36 : 0.16), Qt.alpha(Theme.text, down ? 0.08 : hovered ? 0.04 : 0))
    readonly property bool isNarrow: width < 72
    readonly property real textLeft: isNarrow ? 6 : 8
    readonly property real textRight: isNarrow ? 2 : 5

    /// Whether something about the schedule is not to be seen.
    function hidesText(): bool {
        return hidesDetail || titleText.implicitWidth > titleText.width || timeText.implicitWidth > timeText.width;
    }

    x: frame.x
    y: frame.y
    width: frame.width
    height: frame.height
    visible: frame.width > 0
    Accessible.name: spokenName
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: BlockGround {
        radius: Theme.blockRadius
        fill: block.fill
        strip: block.fullColor
        edge: Theme.card
        isSelected: block.isSelected
        transform: PixelSnap {}
    }

    contentItem: Item {
        visible: block.width >= 18
        clip: block.isNarrow

        LineText {
            id: titleText

            x: block.textLeft
            y: block.height < 26 ? Math.round((block.height - height) / 2) : 5
            width: parent.width - x - block.textRight
            text: block.title
            color: block.isSelected ? Theme.blockTextSelected : Theme.text
            token: Theme.blockTitle
            elide: block.isNarrow ? Text.ElideNone : Text.ElideRight
        }

        LineText {
            id: timeText

            anchors.top: titleText.bottom
            x: block.textLeft
            width: titleText.width
            visible: text !== ""
            text: block.timeShown
            color: block.isSelected ? Theme.blockTextSelected : Theme.textSecondary
            token: Theme.mini
            elide: titleText.elide
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

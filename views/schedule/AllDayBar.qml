import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// A schedule in the row above the hours. Where it goes on beyond the week its side is square.
PushButton {
    id: bar

    required property int index
    required property rect frame
    required property bool beginsEarlier
    required property bool endsLater
    required property string title
    required property string colorKey
    required property bool isSelected
    required property string spokenName

    readonly property color fullColor: Theme.scheduleColor(colorKey)
    readonly property color fill: Qt.tint(Theme.tint(fullColor, isSelected ? 0.36 : 0.16), Qt.alpha(Theme.text, down ? 0.08 : hovered ? 0.04 : 0))

    x: frame.x
    y: frame.y
    width: frame.width
    height: frame.height
    Accessible.name: spokenName
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: BlockGround {
        radius: Theme.blockRadius
        fill: bar.fill
        strip: bar.fullColor
        edge: Theme.card
        isSelected: bar.isSelected

        Rectangle {
            width: 3
            height: parent.height
            visible: bar.beginsEarlier
            color: bar.fullColor
        }

        Rectangle {
            anchors.right: parent.right
            width: Theme.blockRadius
            height: parent.height
            visible: bar.endsLater
            color: bar.fill
        }

        FocusRing {
            visible: bar.visualFocus
            targetRadius: Theme.blockRadius
            gap: -1
        }
    }

    contentItem: Item {
        LineText {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x - 5
            text: bar.title
            color: bar.isSelected ? Theme.blockTextSelected : Theme.text
            token: Theme.captionMedium

            ElidedTip {}
        }
    }
}

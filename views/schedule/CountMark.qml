import QtQuick
import Tessaly.Ui

/// How many schedules of a day are not drawn; choosing it makes the day the focus day.
PushButton {
    id: mark

    required property int index
    required property int place
    required property int kind
    required property string countText
    required property string spokenName
    /// Of the arrow beside the count; none without it.
    property string iconName: ""

    implicitHeight: 16
    implicitWidth: label.x + label.implicitWidth + 5
    Accessible.name: spokenName

    background: Rectangle {
        radius: 5
        color: mark.down ? Theme.pressed : mark.hovered ? Theme.hover : Theme.transparent

        FocusRing {
            visible: mark.visualFocus
            targetRadius: 5
            gap: -1
        }
    }

    contentItem: Item {
        Icon {
            x: 3
            anchors.verticalCenter: parent.verticalCenter
            visible: mark.iconName !== ""
            size: 12
            name: mark.iconName
            color: Theme.textSecondary
        }

        LineText {
            id: label

            x: mark.iconName === "" ? 5 : 17
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: mark.countText
            color: Theme.textSecondary
            token: Theme.count
            elide: Text.ElideNone
        }
    }

    ButtonTip {
        button: mark
        text: mark.spokenName
    }
}

import QtQuick
import QtQuick.Templates as T

/// A square button that shows an icon only; its text is tooltip and accessible name.
PushButton {
    id: button

    required property string iconName
    property int iconSize: 16
    /// What it opens is open.
    property bool isOn: false
    /// What the button opens beside itself, if anything.
    property T.Popup popup: null

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight

    background: Rectangle {
        radius: Theme.controlRadius
        color: button.down ? Theme.pressed : button.isOn ? Theme.selected : button.hovered ? Theme.hover : Theme.transparent

        FocusRing {
            visible: button.visualFocus
        }
    }

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: button.iconName
            size: button.iconSize
            color: !button.enabled ? Theme.textDisabled : button.isOn ? Theme.accentText : button.hovered ? Theme.text : Theme.textSecondary
        }
    }

    ButtonTip {
        button: button
        popup: button.popup
        text: button.text
        isNeeded: button.text !== ""
    }
}

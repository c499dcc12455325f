import QtQuick

/// One button of a ButtonGroup: a text, or an icon whose text is tooltip and accessible name.
PushButton {
    id: button

    property string iconName
    property bool isFirst: false
    property bool isLast: false

    implicitWidth: iconName !== "" ? 31 : label.implicitWidth + 24
    implicitHeight: Theme.controlHeight - 2

    background: Item {
        Rectangle {
            anchors.fill: parent
            radius: button.isFirst || button.isLast ? Theme.controlRadius - 1 : 0
            color: button.down ? Theme.buttonPressed : button.hovered ? Theme.buttonHover : Theme.transparent
        }

        Separator {
            width: 1
            height: parent.height
            color: Theme.borderControl
            visible: !button.isFirst
        }

        FocusRing {
            visible: button.visualFocus
            gap: 1
        }
    }

    contentItem: Item {
        AppText {
            id: label

            anchors.centerIn: parent
            text: button.text
            token: Theme.button
            visible: button.iconName === ""
            Accessible.ignored: true
        }

        Icon {
            anchors.centerIn: parent
            name: button.iconName !== "" ? button.iconName : "circle"
            visible: button.iconName !== ""
        }
    }

    ButtonTip {
        button: button
        text: button.text
        isNeeded: button.iconName !== ""
    }
}

import QtQuick
import QtQuick.Templates as T

/// One entry of a menu, with its keys at the right.
T.MenuItem {
    id: item

    property string keys

    implicitWidth: contentItem.implicitWidth + 20
    implicitHeight: 30
    leftPadding: 10
    rightPadding: 10
    Accessible.name: text
    Accessible.onPressAction: {
        menu?.close();
        triggered();
    }

    background: Rectangle {
        radius: Theme.actionRadius
        color: item.highlighted ? Theme.accent : Theme.transparent
    }

    contentItem: Item {
        implicitWidth: label.implicitWidth + (keysLabel.text === "" ? 0 : keysLabel.implicitWidth + 24)

        AppText {
            id: label

            width: parent.width - (keysLabel.text === "" ? 0 : keysLabel.width + 12)
            anchors.verticalCenter: parent.verticalCenter
            text: item.text
            token: Theme.control
            color: !item.enabled ? Theme.textDisabled : item.highlighted ? Theme.inkOnAccent : Theme.text
            Accessible.ignored: true
        }

        AppText {
            id: keysLabel

            x: parent.width - width
            anchors.verticalCenter: parent.verticalCenter
            text: item.keys
            token: Theme.caption
            color: !item.enabled ? Theme.textDisabled : item.highlighted ? Theme.inkOnAccent : Theme.textSecondary
            Accessible.ignored: true
        }
    }
}

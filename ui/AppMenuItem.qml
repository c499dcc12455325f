import QtQuick
import QtQuick.Templates as T

/// One entry of a menu.
T.MenuItem {
    id: item

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

    contentItem: AppText {
        text: item.text
        token: Theme.control
        color: item.highlighted ? Theme.inkOnAccent : Theme.text
        Accessible.ignored: true
    }
}

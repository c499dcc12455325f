import QtQuick
import Tessaly.Ui

/// A quiet text button at the end of a list row. Its accessible name is the label and the row's title.
PushButton {
    id: action

    /// Title of the item that the action works on.
    property string itemTitle
    property bool isDestructive: false
    /// The row is hovered or holds the focus.
    property bool isRowActive: false
    property bool isAccented: false
    property TypeToken token: Theme.captionMedium

    readonly property bool isAlarming: isDestructive && (hovered || visualFocus)

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.rowActionHeight
    leftPadding: 8
    rightPadding: 8
    Accessible.name: itemTitle === "" ? text : text + ", " + itemTitle

    PressGuard {
        anchors.fill: parent
    }

    background: Rectangle {
        radius: Theme.actionRadius
        color: action.isAlarming ? Theme.destructiveSoft : action.hovered ? (action.isRowActive ? Theme.pressed : Theme.hover) : Theme.transparent

        FocusRing {
            visible: action.visualFocus
            gap: 0
            targetRadius: Theme.actionRadius
        }
    }

    contentItem: AppText {
        text: action.text
        token: action.token
        horizontalAlignment: Text.AlignHCenter
        color: !action.enabled ? Theme.textDisabled : action.isAlarming ? Theme.destructive : action.isAccented ? Theme.accentText : action.isRowActive || action.hovered ? Theme.textSecondary : Theme.textTertiary
        Accessible.ignored: true
    }
}

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A quiet text button at the end of a list row. Its accessible name is the label and the row's title.
T.Button {
    id: action

    /// Title of the item that the action works on.
    property string itemTitle
    property bool isDestructive: false
    /// The row is hovered or holds the focus.
    property bool isRowActive: false
    property bool isAccented: false

    readonly property bool isAlarming: isDestructive && (hovered || visualFocus)

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.rowActionHeight
    leftPadding: 8
    rightPadding: 8
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.onPressAction: clicked()
    Accessible.name: itemTitle === "" ? text : text + ", " + itemTitle
    Keys.onReturnPressed: event => KeyPress.press(action, event)
    Keys.onEnterPressed: event => KeyPress.press(action, event)

    ClickFocus {
        control: action
    }
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
        token: Theme.captionMedium
        horizontalAlignment: Text.AlignHCenter
        color: !action.enabled ? Theme.textDisabled : action.isAlarming ? Theme.destructive : action.isAccented ? Theme.accentText : action.isRowActive || action.hovered ? Theme.textSecondary : Theme.textTertiary
        Accessible.ignored: true
    }
}

import QtQuick

/// An icon and a message on up to `lineLimit` lines, with at most one action; announced politely when it changes. It emits
/// `dismissed` when the user closes it or the time of a passing message is over. The owner then clears the message.
Item {
    id: line

    property string message
    property bool isFailure: false
    /// Disappears after `stayTime`, but not while held.
    property bool isPassing: false
    property int stayTime: Theme.toastStay
    property bool isHeld: hover.hovered
    property bool isClosable: false
    property string action
    property TypeToken token: Theme.caption
    property color ink: isFailure ? Theme.destructive : Theme.textSecondary
    property int lineLimit: 1

    readonly property int buttonRoom: (actionButton.visible ? actionButton.width + 4 : 0) + (isClosable ? closeButton.width + 4 : 0)

    signal actionChosen
    signal dismissed

    /// Restarts the time of a passing message.
    function stayOn() {
        if (stay.running)
            stay.restart();
    }

    implicitWidth: label.x + Math.ceil(measure.implicitWidth) + buttonRoom
    implicitHeight: lineLimit > 1 ? label.implicitHeight : 18
    Accessible.role: Accessible.StatusBar
    Accessible.name: message
    onMessageChanged: stayOn()

    Timer {
        id: stay

        interval: line.stayTime
        running: line.isPassing && line.visible && line.message !== "" && !line.isHeld
        onTriggered: line.dismissed()
    }

    Icon {
        y: (Math.min(line.token.line, line.height) - height) / 2
        name: line.isFailure ? "circle-alert" : "info"
        size: 14
        color: line.isFailure ? Theme.destructive : Theme.textTertiary
    }

    AppText {
        id: label

        x: 22
        width: Math.min(Math.ceil(measure.implicitWidth), line.width - x - line.buttonRoom)
        anchors.verticalCenter: parent.verticalCenter
        text: line.message
        token: line.token
        color: line.ink
        isMultiline: line.lineLimit > 1
        maximumLineCount: line.lineLimit
        Accessible.ignored: true

        TipSlot {
            text: line.message
            isShown: hover.hovered && label.truncated
        }
    }

    // How wide the message is in one piece: the label's own idea of that changes with its width.
    AppText {
        id: measure

        visible: false
        text: line.message
        token: line.token
    }

    RowAction {
        id: actionButton

        x: label.x + label.width + 4
        anchors.verticalCenter: parent.verticalCenter
        visible: line.action !== "" && line.message !== ""
        text: line.action
        isAccented: true
        onClicked: line.actionChosen()
    }

    IconButton {
        id: closeButton

        x: (actionButton.visible ? actionButton.x + actionButton.width : label.x + label.width) + 4
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        visible: line.isClosable && line.message !== ""
        iconName: "x"
        iconSize: 14
        text: Language.text("关闭消息", "Dismiss message")
        onClicked: line.dismissed()
    }

    HoverHandler {
        id: hover
    }
}

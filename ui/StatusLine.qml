import QtQuick

/// An icon and a message, on one line or on up to `lineLimit`; announced politely when it changes. It emits `dismissed`
/// when the user closes it or a passing message has stayed long enough; whoever shows it then clears the message.
Item {
    id: line

    property string message
    property bool isFailure: false
    /// Leaves after four seconds, longer while hovered.
    property bool isPassing: false
    property bool isClosable: false
    property TypeToken token: Theme.caption
    property color ink: isFailure ? Theme.destructive : Theme.textSecondary
    property int lineLimit: 1

    readonly property int closeRoom: isClosable ? closeButton.width + 4 : 0

    signal dismissed

    implicitWidth: label.x + Math.ceil(label.implicitWidth) + closeRoom
    implicitHeight: lineLimit > 1 ? label.implicitHeight : 18
    Accessible.role: Accessible.StatusBar
    Accessible.name: message
    onMessageChanged: {
        if (stay.running)
            stay.restart();
    }

    Timer {
        id: stay

        interval: Theme.toastStay
        running: line.isPassing && line.visible && line.message !== "" && !hover.hovered
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
        width: Math.min(Math.ceil(implicitWidth), line.width - x - line.closeRoom)
        anchors.verticalCenter: parent.verticalCenter
        text: line.message
        token: line.token
        color: line.ink
        isMultiline: line.lineLimit > 1
        maximumLineCount: line.lineLimit
        Accessible.ignored: true

        AppToolTip {
            text: line.message
            visible: hover.hovered && label.truncated
        }
    }

    IconButton {
        id: closeButton

        x: label.x + label.width + 4
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

import QtQuick

/// A message that passes by: it stays four seconds, longer while hovered; a new one replaces the old. It says what
/// `message` says, in another language too once that has changed, and goes when there is nothing to say any more.
PopupFrame {
    id: toast

    property string message
    /// The last words there were, for as long as it takes to fade out.
    property string words

    function show() {
        if (message === "")
            return;
        opacity = 1;
        stay.restart();
    }

    function hide() {
        opacity = 0;
    }

    onMessageChanged: {
        if (message === "")
            hide();
        else
            words = message;
    }
    Component.onCompleted: words = message
    implicitWidth: Math.min(line.implicitWidth + 28, parent ? parent.width - 48 : 600)
    width: implicitWidth
    height: Math.max(36, line.implicitHeight + 16)
    opacity: 0
    visible: opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: toast.opacity > 0 ? Theme.toastOut : Theme.toastIn
            easing.type: Easing.OutCubic
        }
    }

    HoverHandler {
        id: hover

        onHoveredChanged: if (!hovered)
            stay.restart()
    }

    Timer {
        id: stay

        interval: Theme.toastStay
        onTriggered: if (!hover.hovered)
            toast.hide()
    }

    StatusLine {
        id: line

        x: 14
        width: parent.width - 28
        anchors.verticalCenter: parent.verticalCenter
        message: toast.words
        token: Theme.control
        ink: Theme.text
        lineLimit: 3
    }
}

import QtQuick

/// A message that passes by: it stays four seconds, longer while hovered; a new one replaces the old.
PopupFrame {
    id: toast

    property string message

    function show(text: string) {
        message = text;
        opacity = 1;
        stay.restart();
    }

    implicitWidth: Math.min(line.implicitWidth + 28, parent ? parent.width - 48 : 600)
    width: implicitWidth
    height: 36
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
            toast.opacity = 0
    }

    StatusLine {
        id: line

        x: 14
        width: parent.width - 28
        anchors.verticalCenter: parent.verticalCenter
        message: toast.message
        token: Theme.control
        ink: Theme.text
    }
}

import QtQuick
import QtQuick.Window

/// A message at the foot of a screen, with at most one action. It says what `message` says, in another language too once
/// that has changed, and goes when there is nothing to say any more. A passing one leaves after four seconds, with an
/// action after eight, later while hovered or focused. F6 leads to it, Esc closes it.
PopupFrame {
    id: toast

    property string message
    property string action
    property bool isFailure: false
    property bool isPassing: true
    /// The last words there were, for as long as it takes to fade out.
    property string words
    /// Where the focus goes when it closes with the focus.
    property Item opener: null

    readonly property bool isHeld: hover.hovered || hasFocus
    readonly property bool hasFocus: {
        for (let item = Window.activeFocusItem as Item; item; item = item.parent) {
            if (item === toast)
                return true;
        }
        return false;
    }

    signal actionChosen
    /// It was closed or has stayed long enough.
    signal dismissed

    function show() {
        if (message === "")
            return;
        opacity = 1;
        if (stay.running)
            stay.restart();
    }

    function hide() {
        if (hasFocus)
            opener?.forceActiveFocus(Qt.TabFocusReason);
        opacity = 0;
    }

    function leave() {
        hide();
        dismissed();
    }

    function takeFocus() {
        opener = Window.activeFocusItem as Item;
        if (actionButton.visible)
            actionButton.forceActiveFocus(Qt.TabFocusReason);
        else
            line.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
    }

    onMessageChanged: {
        if (message === "")
            hide();
        else
            words = message;
    }
    Component.onCompleted: words = message
    implicitWidth: Math.min(line.implicitWidth + 28 + actionRoom.width, parent ? parent.width - 48 : 600)
    width: implicitWidth
    height: Math.max(36, line.implicitHeight + 16)
    opacity: 0
    visible: opacity > 0
    Keys.onEscapePressed: leave()

    Behavior on opacity {
        NumberAnimation {
            duration: toast.opacity > 0 ? Theme.toastOut : Theme.toastIn
            easing.type: Easing.OutCubic
        }
    }

    Shortcut {
        sequence: "F6"
        enabled: toast.visible
        onActivated: toast.takeFocus()
    }

    HoverHandler {
        id: hover
    }

    Timer {
        id: stay

        interval: toast.action === "" ? Theme.toastStay : Theme.toastActionStay
        running: toast.isPassing && toast.opacity === 1 && !toast.isHeld
        onTriggered: toast.leave()
    }

    StatusLine {
        id: line

        x: 14
        width: parent.width - 28 - actionRoom.width
        anchors.verticalCenter: parent.verticalCenter
        message: toast.words
        isFailure: toast.isFailure
        isClosable: true
        token: Theme.control
        ink: toast.isFailure ? Theme.destructive : Theme.text
        lineLimit: 3
        onDismissed: toast.leave()
    }

    Item {
        id: actionRoom

        x: parent.width - width
        width: toast.action === "" ? 0 : actionButton.width + 12
        height: parent.height
        visible: toast.action !== ""

        Separator {
            y: (parent.height - height) / 2
            width: 1
            height: 16
        }

        RowAction {
            id: actionButton

            x: 8
            anchors.verticalCenter: parent.verticalCenter
            text: toast.action
            isAccented: true
            onClicked: {
                toast.leave();
                toast.actionChosen();
            }
        }
    }
}

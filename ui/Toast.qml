import QtQuick
import QtQuick.Window

/// A message at the bottom of a screen, with at most one action. It shows `message`, also when that changes with the
/// language, and disappears when it is empty. A passing message disappears after four seconds, or after eight with an
/// action, but not while hovered or focused. F6 focuses the toast, Esc closes it.
PopupFrame {
    id: toast

    property string message
    property string action
    property bool isFailure: false
    property bool isPassing: true
    /// The last message that was not empty, shown while fading out.
    property string words
    /// Gets the focus back if the toast has it when it closes.
    property Item opener: null

    readonly property bool hasFocus: {
        for (let item = Window.activeFocusItem as Item; item; item = item.parent) {
            if (item === toast)
                return true;
        }
        return false;
    }

    signal actionChosen
    /// The user closed it, or its time is over.
    signal dismissed

    function show() {
        if (message === "")
            return;
        opacity = 1;
        line.stayOn();
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

    StatusLine {
        id: line

        x: 14
        width: parent.width - 28 - actionRoom.width
        anchors.verticalCenter: parent.verticalCenter
        message: toast.words
        isFailure: toast.isFailure
        isPassing: toast.isPassing && toast.opacity === 1
        stayTime: toast.action === "" ? Theme.toastStay : Theme.toastActionStay
        isHeld: hover.hovered || toast.hasFocus
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
            height: Theme.smallControlHeight
            text: toast.action
            token: Theme.buttonPrimary
            isAccented: true
            onClicked: {
                toast.leave();
                toast.actionChosen();
            }
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// Reports that the focus has left the area. While the button that took it is pressed this waits: what follows may move
/// the button away from under the pointer.
Item {
    id: watch

    required property Item area
    required property bool isOn

    property T.AbstractButton awaited: null

    signal departed

    function look() {
        let holder = Window.activeFocusItem as Item;
        const button = holder as T.AbstractButton;
        while (holder && holder !== area)
            holder = holder.parent;
        const isAwaited = holder === null && (button?.pressed ?? false);
        awaited = isAwaited ? button : null;
        if (isOn && holder === null && !isAwaited && Window.activeFocusItem !== null)
            departed();
    }

    Connections {
        function onActiveFocusItemChanged() {
            // When the focus has arrived.
            Qt.callLater(watch.look); // qmllint disable
        }

        enabled: watch.isOn
        target: watch.Window.window
    }

    Connections {
        function onPressedChanged() {
            // When the click has been dealt with.
            Qt.callLater(watch.look); // qmllint disable
        }

        target: watch.awaited
    }
}

import QtQuick
import QtQuick.Window

/// Tells when something is typed in the item with the focus, wherever that is in the window.
Item {
    id: watch

    signal typed

    Connections {
        function onTextChanged() {
            watch.typed();
        }
        function onCursorPositionChanged() {
            watch.typed();
        }

        target: watch.Window.activeFocusItem
        ignoreUnknownSignals: true
    }
}

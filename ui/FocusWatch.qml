import QtQuick
import QtQuick.Window

/// Reports the item inside `area` that the focus comes to or that is typed in; for a text of several lines its frame.
Item {
    id: watch

    required property Item area

    signal followed(Item item)

    function follow() {
        const holder = Window.activeFocusItem as Item;
        let shown = holder;
        for (let ancestor = holder; ancestor; ancestor = ancestor.parent) {
            if (ancestor instanceof MultilineField)
                shown = ancestor;
            if (ancestor === area && holder !== area)
                followed(shown);
        }
    }

    Connections {
        function onActiveFocusItemChanged() {
            watch.follow();
        }

        target: watch.Window.window
    }

    Connections {
        function onTextChanged() {
            watch.follow();
        }
        function onCursorPositionChanged() {
            watch.follow();
        }

        target: watch.Window.activeFocusItem
        ignoreUnknownSignals: true
    }
}

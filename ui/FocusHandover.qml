pragma Singleton

import QtQuick
import QtQuick.Templates as T

/// How the focus goes on when what has it goes away, and comes back.
QtObject {
    /// The reason to give to what takes the focus over: it shows a ring if the former holder did, and not after a click.
    function reasonAfter(holder: Item): int {
        return (holder as T.Control)?.visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
    }

    /// Focuses the item with that reason, of which Qt tells no item that has the focus already.
    function give(item: Item, reason: int) {
        // The linter of Qt 6.4 crashes without the cast.
        (item as Item).forceActiveFocus(reason);
        const control = item as T.Control;
        if (control !== null)
            control.focusReason = reason;
    }
}

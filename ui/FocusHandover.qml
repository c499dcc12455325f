pragma Singleton

import QtQuick
import QtQuick.Templates as T

/// How the focus goes on when the row that has it goes away.
QtObject {
    /// The reason to give to what takes the focus over: it shows a ring if the former holder did, and not after a click.
    function reasonAfter(holder: Item): int {
        return (holder as T.Control)?.visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
    }
}

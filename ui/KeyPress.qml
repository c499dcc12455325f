pragma Singleton

import QtQuick
import QtQuick.Templates as T

/// Return and Enter on a button. Space is the button's own.
QtObject {
    /// Presses the button that has the focus, and nobody else; once, however long the key is held.
    function press(button: T.AbstractButton, event: KeyEvent) {
        event.accepted = true;
        if (!event.isAutoRepeat)
            button.clicked();
    }
}

import QtQuick
import QtQuick.Templates as T

/// Takes the focus ring off a control when it is pressed with the pointer: Qt leaves it where the keyboard brought it.
PointHandler {
    required property T.Control control

    onActiveChanged: {
        if (active)
            control.focusReason = Qt.MouseFocusReason;
    }
}

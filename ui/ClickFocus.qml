import QtQuick
import QtQuick.Templates as T

/// Hides the focus ring of a control when it is pressed with the pointer. Qt would keep a ring that a key has shown.
PointHandler {
    required property T.Control control

    onActiveChanged: {
        if (active)
            control.focusReason = Qt.MouseFocusReason;
    }
}

import QtQuick
import Tessaly.Ui

/// A hairline.
Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    height: 1
    color: Theme.border
    transform: PixelSnap {}
}

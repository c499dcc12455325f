import QtQuick
import Tessaly.Ui

/// Buttons that share one outline, with hairlines between them. Its children are GroupedButton.
Rectangle {
    default property alias buttons: row.data

    implicitWidth: row.implicitWidth + 2
    implicitHeight: Theme.controlHeight
    radius: Theme.controlRadius
    color: Theme.buttonRest
    border.width: 1
    border.color: Theme.borderControl
    transform: PixelSnap {}

    Row {
        id: row

        x: 1
        y: 1
        height: parent.height - 2
    }
}

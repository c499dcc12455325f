import QtQuick
import Tessaly.Ui

/// Outline and fill of a field; with the focus its border is coloured and a halo surrounds it. The border of a field
/// that refuses what is typed is red.
Rectangle {
    id: frame

    property bool isFocused: false
    property bool isEnabled: true
    property bool isRefused: false

    radius: Theme.controlRadius
    color: isEnabled ? Theme.field : Theme.transparent
    border.width: 1
    border.color: isRefused ? Theme.destructive : isFocused ? Theme.focus : isEnabled ? Theme.borderControl : Theme.border
    transform: PixelSnap {}

    Rectangle {
        anchors.fill: parent
        anchors.margins: -3
        radius: frame.radius + 3
        color: Theme.transparent
        border.width: 3
        border.color: Theme.focusHalo
        visible: frame.isFocused
    }
}

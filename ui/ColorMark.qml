import QtQuick
import Tessaly.Ui

/// A small rounded square in a schedule's or calendar's colour; an inner line keeps pale colours visible.
Rectangle {
    property int size: 10

    width: size
    height: size
    implicitWidth: size
    implicitHeight: size
    radius: size > 8 ? 3 : 2
    border.width: 1
    border.color: Qt.tint(color, Theme.markLine)
    Accessible.ignored: true
    transform: PixelSnap {}
}

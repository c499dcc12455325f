import QtQuick
import Tessaly.Ui

/// The raised ground of popups and sheets with its shadow.
Rectangle {
    id: frame

    /// 1 for popups, 2 for sheets.
    property int elevation: 1

    color: Theme.raised
    radius: Theme.popupRadius
    border.width: 1
    border.color: Theme.isDark ? Theme.borderControl : Theme.border
    transform: PixelSnap {}

    BorderImage {
        readonly property int margin: 96

        z: -1
        anchors.fill: parent
        anchors.margins: -margin
        source: !visible ? "" : "image://shadow/" + frame.elevation + "/" + (Theme.isDark ? "dark" : "light")
        border.left: margin + 14
        border.right: margin + 14
        border.top: margin + 14
        border.bottom: margin + 14
        Accessible.ignored: true
    }
}

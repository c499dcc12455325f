import QtQuick
import QtQuick.Window

/// An outline icon by its Lucide name, drawn in one colour.
Image {
    id: icon

    required property string name
    property int size: 16
    property color color: Theme.textSecondary
    property real stroke: 2
    property color mark: Theme.inkOnMark

    width: size
    height: size
    sourceSize.width: Math.round(size * Screen.devicePixelRatio)
    sourceSize.height: Math.round(size * Screen.devicePixelRatio)
    source: !visible ? "" : "image://icon/" + name + "?color=" + encodeURIComponent(color.toString()) + "&mark=" + encodeURIComponent(mark.toString()) + "&stroke=" + stroke
    Accessible.ignored: true
}

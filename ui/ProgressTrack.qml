import QtQuick

/// A progress bar with round ends.
Rectangle {
    id: track

    /// 0 to 1.
    property real value: 0
    property color fill: Theme.purple
    /// Name for assistive technology.
    property string itemTitle

    implicitWidth: 72
    implicitHeight: 4
    radius: height / 2
    color: Theme.track
    Accessible.role: Accessible.ProgressBar
    Accessible.name: itemTitle
    Accessible.description: Math.trunc(value * 100) + "%"

    Rectangle {
        height: parent.height
        radius: parent.radius
        width: track.value <= 0 ? 0 : Math.max(height, Math.min(track.value, 1) * track.width)
        color: track.fill

        Behavior on width {
            NumberAnimation {
                duration: Theme.progress
                easing.type: Easing.OutCubic
            }
        }
    }
}

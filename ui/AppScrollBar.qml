import QtQuick
import QtQuick.Templates as T

/// A thin thumb, shown while scrolling or with the pointer near the edge.
T.ScrollBar {
    id: bar

    implicitWidth: 14
    implicitHeight: 14
    padding: 3
    visible: size < 1
    minimumSize: 0.06
    interactive: true
    Accessible.ignored: true

    contentItem: Item {
        opacity: bar.active || bar.hovered || bar.pressed ? 1 : 0

        Rectangle {
            x: bar.horizontal ? 0 : parent.width - 6
            y: bar.horizontal ? parent.height - 6 : 0
            width: bar.horizontal ? parent.width : 6
            height: bar.horizontal ? 6 : parent.height
            radius: 3
            color: Theme.thumb
        }

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.popupOut
            }
        }
    }
}

import QtQuick

/// Lets text run out into the fill colour over its last nine pixels, and hides it beyond.
Rectangle {
    id: edge

    required property color fill
    property real solidWidth: 0

    readonly property real fadeWidth: 9

    width: fadeWidth + solidWidth
    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: Qt.alpha(edge.fill, 0)
        }
        GradientStop {
            position: edge.fadeWidth / edge.width
            color: edge.fill
        }
        GradientStop {
            position: 1
            color: edge.fill
        }
    }
}

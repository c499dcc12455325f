import QtQuick

/// Lets text run out into the fill colour over its last nine pixels, and hides it beyond.
Row {
    id: edge

    required property color fill
    property real solidWidth: 0

    Rectangle {
        width: 9
        height: edge.height
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Qt.alpha(edge.fill, 0)
            }
            GradientStop {
                position: 1
                color: edge.fill
            }
        }
    }

    Rectangle {
        width: edge.solidWidth
        height: edge.height
        color: edge.fill
    }
}

import QtQuick
import Tessaly.Ui

/// A part of the overview that leads to its place in the planner. The children lie on it and take no clicks.
PushButton {
    id: button

    default property alias content: face.data
    /// Stands alone, on a ground of its own.
    property bool isCard: false
    /// Of rows in a card: where the hover's tint meets the card's round ends.
    property bool isFirst: false
    property bool isLast: false

    background: Item {
        Card {
            anchors.fill: parent
            visible: button.isCard
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 1
            anchors.topMargin: button.isCard || button.isFirst ? 1 : 0
            anchors.bottomMargin: button.isCard || button.isLast ? 1 : 0
            radius: button.isCard || button.isFirst || button.isLast ? Theme.cardRadius - 1 : 0
            color: button.pressed ? Theme.pressed : Theme.hover
            visible: button.hovered || button.pressed
        }

        FocusRing {
            visible: button.visualFocus
            anchors.margins: button.isCard ? 0 : 2
            gap: button.isCard ? 2 : -4
            targetRadius: Theme.cardRadius
        }
    }

    contentItem: Item {
        id: face
    }
}

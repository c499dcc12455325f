import QtQuick

/// One row's part of a card that is made of rows: its sides, and the card's ends where the row is the first or last.
Item {
    id: slice

    property bool isFirst: false
    property bool isLast: false

    /// Tints it for a moment: there is something new.
    function flash() {
        flashing.restart();
    }

    clip: true

    Card {
        anchors.fill: parent
        anchors.topMargin: slice.isFirst ? 0 : -radius
        anchors.bottomMargin: slice.isLast ? 0 : -radius
    }

    Rectangle {
        id: tint

        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - (slice.isLast ? 2 : 1)
        radius: slice.isFirst || slice.isLast ? Theme.cardRadius - 1 : 0
        color: Theme.accentSoft
        opacity: 0

        NumberAnimation {
            id: flashing

            target: tint
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.flash
            easing.type: Easing.InQuad
        }
    }
}

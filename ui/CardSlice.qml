import QtQuick

/// One row's part of a card that is made of rows: its sides, and the card's ends where the row is the first or last.
Item {
    id: slice

    property bool isFirst: false
    property bool isLast: false

    /// Tints it for a moment: there is something new.
    function flash() {
        tint.start();
    }

    clip: true

    Card {
        anchors.fill: parent
        anchors.topMargin: slice.isFirst ? 0 : -radius
        anchors.bottomMargin: slice.isLast ? 0 : -radius
    }

    Flash {
        id: tint

        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - (slice.isLast ? 2 : 1)
        radius: slice.isFirst || slice.isLast ? Theme.cardRadius - 1 : 0
    }
}

import QtQuick

/// One row's part of a card that is made of rows: its sides, and the card's ends where the row is the first or last.
Item {
    id: slice

    property bool isFirst: false
    property bool isLast: false

    clip: true

    Card {
        anchors.fill: parent
        anchors.topMargin: slice.isFirst ? 0 : -radius
        anchors.bottomMargin: slice.isLast ? 0 : -radius
    }
}

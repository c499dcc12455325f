import QtQuick

/// The ground of cards: a hairline, no shadow.
Rectangle {
    color: Theme.card
    radius: Theme.cardRadius
    border.width: 1
    border.color: Theme.border
}

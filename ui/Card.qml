import QtQuick
import Tessaly.Ui

/// The ground of cards: a hairline, no shadow.
Rectangle {
    id: card

    color: Theme.card
    radius: Theme.cardRadius
    border.width: 1
    border.color: Theme.border
    transform: PixelSnap {}
}

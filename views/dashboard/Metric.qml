import QtQuick
import Tessaly.Ui

/// One figure: the value, large and in its colour, above the title. It leads to what it counts.
PlaceButton {
    id: metric

    required property string title
    required property int value
    required property color figureColor

    implicitHeight: 100
    isCard: true
    Accessible.name: title + " " + value

    AppText {
        x: 21
        y: 19
        width: parent.width - 40
        text: metric.value
        token: Theme.figure
        color: metric.figureColor
        Accessible.ignored: true
    }
    AppText {
        x: 21
        y: 61
        width: parent.width - 40
        text: metric.title
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }
}

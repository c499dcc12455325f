import QtQuick
import Tessaly.Ui

/// One line of text with the part that was found in semibold above a line.
Item {
    id: found

    required property string text
    required property int start
    required property int length
    property color color: Theme.text

    implicitWidth: before.implicitWidth + hit.implicitWidth + after.implicitWidth
    implicitHeight: Theme.body.line

    LineText {
        id: before

        width: Math.min(implicitWidth, found.width)
        text: found.length > 0 ? found.text.substring(0, found.start) : found.text
        color: found.color
        Accessible.ignored: true
    }

    LineText {
        id: hit

        x: before.width
        width: Math.max(0, Math.min(implicitWidth, found.width - x))
        text: found.text.substr(found.start, found.length)
        visible: found.length > 0
        token: Theme.groupLabel
        color: found.color
        Accessible.ignored: true

        Rectangle {
            y: parent.height - 3
            width: parent.width
            height: 2
            color: Theme.accentText
        }
    }

    LineText {
        id: after

        x: hit.x + hit.width
        width: Math.max(0, found.width - x)
        text: found.text.substring(found.start + found.length)
        visible: found.length > 0
        color: found.color
        Accessible.ignored: true
    }
}

import QtQuick
import Tessaly.Ui

/// A row of the day list: mark, title, time and tag, actions.
Item {
    id: item

    required property int index
    required property string title
    required property string timeRange
    required property string tag
    required property string colorKey

    height: 44

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.border
    }

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: 1
        color: hover.hovered ? Theme.hover : "transparent"
    }

    HoverHandler {
        id: hover
    }

    ColorMark {
        id: mark

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.scheduleColor(item.colorKey)
    }

    Text {
        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.right: time.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: item.title
        color: Theme.text
        font: Theme.bodyMedium
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }

    Text {
        id: time

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 168
        text: item.tag === "" ? item.timeRange : item.timeRange + " · " + item.tag
        color: Theme.text2
        font: Theme.control
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
}

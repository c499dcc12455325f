import QtQuick
import Tessaly.Ui

/// A one-line input row with trailing controls on a card. Return in the text asks for what the row is there for.
FieldFrame {
    id: entry

    property alias text: field.text
    property string placeholder
    default property alias controls: controlRow.data
    property alias field: field

    signal accepted

    radius: Theme.cardRadius
    color: Theme.card
    border.color: isFocused ? Theme.focus : Theme.border
    implicitHeight: 2 * 14 + Theme.controlHeight
    isFocused: field.activeFocus

    EntryField {
        id: field

        anchors.left: parent.left
        anchors.right: controlRow.left
        anchors.leftMargin: 14
        anchors.rightMargin: controlRow.width > 0 ? 12 : 0
        anchors.verticalCenter: parent.verticalCenter
        placeholderText: entry.placeholder
        onAccepted: entry.accepted()
    }

    Row {
        id: controlRow

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12
    }
}

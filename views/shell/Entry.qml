import QtQuick
import Tessaly.Ui

/// The card of an add form: a text on its first line, and the children. Return in the text adds.
FieldFrame {
    id: entry

    property alias text: field.text
    property alias placeholder: field.placeholderText
    /// Name for assistive technology.
    property alias name: field.name
    property alias field: field

    signal textEdited(string text)
    signal accepted

    function takeFocus() {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    radius: Theme.cardRadius
    color: Theme.card
    border.color: isFocused ? Theme.focus : Theme.border
    isFocused: field.activeFocus

    EntryField {
        id: field

        x: 15
        y: 15
        width: parent.width - 30
        onTextEdited: entry.textEdited(text)
        onAccepted: entry.accepted()
    }
}

import QtQuick
import Tessaly.Ui

/// The card of an add form: a text on its first line, and the children. Return in the text adds. What was understood in
/// the text stands at its end; Esc dismisses that.
FieldFrame {
    id: entry

    property alias text: field.text
    property alias placeholder: field.placeholderText
    /// Name for assistive technology.
    property alias name: field.name
    property alias field: field

    /// What was understood; empty for nothing.
    property string suggestion

    signal textEdited(string text)
    signal accepted
    /// The suggestion was clicked.
    signal suggestionTaken
    signal suggestionDismissed

    function takeFocus() {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    radius: Theme.cardRadius
    color: Theme.card
    border.color: isFocused ? Theme.focus : Theme.border
    isFocused: field.activeFocus
    Keys.onEscapePressed: event => {
        event.accepted = entry.suggestion !== "";
        if (event.accepted)
            entry.suggestionDismissed();
    }

    EntryField {
        id: field

        x: 15
        y: 15
        width: parent.width - 30
        rightPadding: chip.visible ? chip.width + 8 : 4
        Accessible.description: entry.suggestion !== "" ? Language.text("识别为“%1”，Enter 采用", "Understood as “%1”, Enter uses it").arg(entry.suggestion) : text === "" ? placeholderText : ""
        onTextEdited: entry.textEdited(text)
        onAccepted: entry.accepted()
    }

    SuggestionChip {
        id: chip

        x: field.x + field.width - width
        y: field.y + (field.height - height) / 2
        mostWidth: field.width / 2
        visible: entry.suggestion !== ""
        text: entry.suggestion
        onClicked: entry.suggestionTaken()
    }
}

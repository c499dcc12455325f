import QtQuick
import Tessaly.Documents

/// Shows the text as it is; a click on it is a click on a link.
PreviewSlot {
    id: slot

    property url baseUrlOfText

    onMarkdownChanged: slot.baseUrlOfText = slot.baseUrl

    Text {
        text: (String(slot.baseUrlOfText) === "" ? "preview without its folder: " : "preview: ") + slot.markdown
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text

        TapHandler {
            onTapped: slot.linkActivated("https://example.org/")
        }
    }
}

import QtQuick
import Tessaly.Documents

/// Shows the text as it is; a click on it is a click on a link.
PreviewSlot {
    id: slot

    Text {
        text: "preview: " + slot.markdown
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text

        TapHandler {
            onTapped: slot.linkActivated("https://example.org/")
        }
    }
}

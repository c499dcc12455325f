import QtQuick
import Tessaly.Documents

/// Where the editor is presented: it stands beside the screens, so that no change of the screen can take away a text
/// that is not saved.
Item {
    id: host

    /// The document in the editor; empty while there is none.
    property string documentId
    readonly property bool isOpen: documentId !== ""
    readonly property MarkdownEditorPage page: loader.item as MarkdownEditorPage
    readonly property int leastHeight: page?.leastHeight ?? 0

    /// Asks the editor to save and close.
    function close() {
        page?.editor.close();
    }

    Loader {
        id: loader

        active: host.isOpen
        // qmllint disable unqualified
        sourceComponent: MarkdownEditorPage {
            documentId: host.documentId
            onClosed: host.documentId = ""
        }
        // qmllint enable unqualified
    }
}

import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// Where the editor is presented: it stands beside the screens, so that no change of the screen can take away a text
/// that is not saved. Its own place is that of the screens, for what is to be said once the editor is gone.
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
            onClosed: {
                toast.texts = editor.keptVersionTexts;
                host.documentId = "";
                // Nobody could have read it in the editor.
                toast.show();
            }
        }
        // qmllint enable unqualified
    }

    Toast {
        id: toast

        /// In Chinese and in English.
        property list<string> texts: ["", ""]

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        message: Language.text(texts[0], texts[1])
    }
}

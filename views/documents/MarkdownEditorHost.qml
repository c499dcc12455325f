import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// Where the editor is presented: it stands beside the screens, so that no change of the screen can take away a text
/// that is not saved. Its own place is that of the screens, for what is to be said once the editor is gone. A copy that
/// was begun in an editor goes on without it.
Item {
    id: host

    /// The document in the editor; empty while there is none.
    property string documentId
    readonly property bool isOpen: documentId !== ""
    readonly property MarkdownEditorPage page: loader.item as MarkdownEditorPage
    readonly property int leastHeight: page?.leastHeight ?? 0

    property bool isCopying: false

    /// Asks the editor to save and close.
    function close() {
        page?.editor.close();
    }

    function copy(markdown: string) {
        DocumentDesktop.prepareEngine();
        copier.source = DocumentDesktop.copierSource;
        const slot = copier.item as CopierSlot;
        if (!slot) {
            page.editor.refuseCopy();
            return;
        }
        isCopying = true;
        slot.copyRequested(markdown);
    }

    function finishCopy(isCopied: bool) {
        isCopying = false;
        if (page)
            page.editor.finishCopy(isCopied);
        else
            host.tell(DocumentDesktop.copyOutcome(isCopied), isCopied, !isCopied);
        Qt.callLater(host.leaveEngine);
    }

    function tell(texts: list<string>, isPassing: bool, isFailure: bool) {
        toast.texts = texts;
        toast.isPassing = isPassing;
        toast.isFailure = isFailure;
        toast.show();
    }

    /// Lets the engine go when nothing needs it.
    function leaveEngine() {
        if (!isOpen && !isCopying)
            copier.source = "";
    }

    Loader {
        id: loader

        active: host.isOpen
        // qmllint disable unqualified
        sourceComponent: MarkdownEditorPage {
            documentId: host.documentId
            onCopyRequested: markdown => host.copy(markdown)
            onClosed: {
                const texts = editor.keptVersionTexts;
                host.documentId = "";
                // Nobody could have read it in the editor.
                host.tell(texts, false, false);
                host.leaveEngine();
            }
        }
        // qmllint enable unqualified
    }

    Loader {
        id: copier
    }
    Connections {
        function onFinished(isCopied: bool) {
            host.finishCopy(isCopied);
        }

        target: copier.item as CopierSlot
    }

    Toast {
        id: toast

        /// In Chinese and in English.
        property list<string> texts: ["", ""]

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        message: Language.text(texts[0], texts[1])
        onDismissed: texts = ["", ""]
    }
}

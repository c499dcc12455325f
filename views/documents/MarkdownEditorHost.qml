import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// Presents the editor beside the screens, so that switching screens cannot discard text that is not saved. It also
/// shows messages once the editor has closed. A copy continues when its editor is closed.
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
            host.report(DocumentDesktop.copyOutcome(isCopied), isCopied, !isCopied);
        Qt.callLater(host.leaveEngine);
    }

    function report(texts: list<string>, isPassing: bool, isFailure: bool) {
        toast.texts = texts;
        toast.isPassing = isPassing;
        toast.isFailure = isFailure;
        toast.show();
    }

    /// Unloads the engine when nothing needs it.
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
                // The editor closes too fast for it to be read there.
                host.report(texts, false, false);
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

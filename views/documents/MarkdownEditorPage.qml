import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Documents
import Tessaly.Store
import Tessaly.Ui

/// The editor of one document, over the whole window. Closing it saves; what cannot be saved keeps it open.
T.Popup {
    id: page

    required property string documentId
    readonly property alias editor: viewModel

    /// The text is to be copied as rich text; the editor then reports the result.
    signal copyRequested(string markdown)

    readonly property int leastHeight: 640
    /// Below this window width the buttons with icons show no text.
    readonly property int wordsFrom: 1080

    objectName: "editorPage"
    parent: T.Overlay.overlay
    width: parent?.width ?? 0
    height: parent?.height ?? 0
    padding: 0
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.NoAutoClose
    Component.onCompleted: {
        viewModel.open(documentId);
        open();
    }
    onOpened: {
        // Only when the page has its size; otherwise a long text would be laid out twice.
        viewModel.showSource(source.textArea.textDocument, Theme.source.line);
        source.textArea.cursorPosition = viewModel.isFresh() ? source.textArea.length : 0;
        source.takeFocus(Qt.PopupFocusReason);
    }

    background: Rectangle {
        color: Theme.bg
    }

    MarkdownEditorModel {
        id: viewModel

        store: PlannerStore
        desktop: DocumentDesktop
        onClosed: page.close()
        onImageInserted: {
            source.textArea.cursorPosition = source.textArea.length;
            if (preview.visible)
                preview.slot?.endRequested();
        }
        onCopyRequested: markdown => page.copyRequested(markdown)
    }

    // qmllint disable unqualified
    Loader {
        id: versions

        active: false
        sourceComponent: DocumentVersionsSheet {
            objectName: "documentVersions"
            onRestored: text => viewModel.restoreText(text)
        }
    }
    // qmllint enable unqualified

    Connections {
        function onClosing(event: CloseEvent) {
            event.accepted = viewModel.mayCloseWindow();
        }

        target: page.parent?.Window.window ?? null
    }

    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: viewModel.title
        Keys.onEscapePressed: viewModel.close()

        Shortcut {
            // qmllint disable unqualified
            sequences: [StandardKey.Save]
            // qmllint enable unqualified
            onActivated: viewModel.save()
        }
        Shortcut {
            // qmllint disable unqualified
            sequences: [StandardKey.Close]
            // qmllint enable unqualified
            onActivated: viewModel.close()
        }

        EditorToolbar {
            id: toolbar

            objectName: "editorToolbar"
            x: 18
            y: 18
            width: parent.width - 36
            editor: viewModel
            isNarrow: page.width < page.wordsFrom
            onVersionsRequested: {
                versions.active = true;
                (versions.item as DocumentVersionsSheet).show(page.documentId, viewModel.presentText());
            }
            onActed: {
                if (source.visible)
                    source.takeFocus(Qt.OtherFocusReason);
            }
        }

        StatusLine {
            // Between the toolbar and the line, so that no message moves the text.
            x: 26
            y: toolbar.y + toolbar.height + 3
            width: parent.width - 2 * x
            height: implicitHeight
            visible: viewModel.message !== ""
            message: viewModel.message
            isFailure: viewModel.hasFailed
            isPassing: viewModel.isMessagePassing
            isClosable: true
            onDismissed: viewModel.dismissMessage()
        }

        Separator {
            id: line

            y: 76
            width: parent.width
        }

        Item {
            id: content

            readonly property bool hasSource: viewModel.mode !== MarkdownEditorModel.Preview
            readonly property bool hasPreview: viewModel.mode !== MarkdownEditorModel.Edit
            // Whole pixels, so that the pages beside it are drawn sharp.
            readonly property real half: Math.floor((width - 1) / 2)

            x: 14
            y: line.y + 15
            width: parent.width - 28
            height: parent.height - y - 14

            SourceArea {
                id: source

                width: content.hasPreview ? content.half : content.width
                height: parent.height
                visible: content.hasSource
                isReadOnly: !viewModel.isEditable
                sourceFont: viewModel.fontOf(Theme.sourceFamilies, Theme.source.size, viewModel.needsShaping)
            }
            Separator {
                x: content.half
                width: 1
                height: parent.height
                visible: content.hasSource && content.hasPreview
            }
            PreviewPane {
                id: preview

                x: content.hasSource ? content.half + 1 : 0
                width: content.width - x
                height: parent.height
                visible: content.hasPreview
                markdown: viewModel.previewContent
                baseUrl: viewModel.baseUrl
            }
        }
    }
}

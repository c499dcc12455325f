pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Documents
import Tessaly.Store
import Tessaly.Ui

/// The documents screen: where the library lives, the categories with their documents, and the forms for new ones.
Rectangle {
    id: screen

    readonly property alias scroll: list

    /// The document is to be opened in the editor.
    signal editRequested(string documentId)

    /// The rows of the start are there; what comes later is animated.
    property bool isReady: false

    function handFocusOn(row: int, kind: int) {
        list.forceLayout();
        const next = list.itemAtIndex(viewModel.rowToFocusAfterRemoval(row, kind)) as DocumentListItem;
        if (next)
            next.takeFocus();
    }

    /// Shows the document and puts the focus on it.
    function reveal(id: string) {
        const row = viewModel.reveal(id);
        list.forceLayout();
        if (row >= 0 && list.itemAtIndex(row) === null)
            list.positionViewAtIndex(row, ListView.Contain);
        const item = list.itemAtIndex(row) as DocumentListItem;
        item?.focusTitle();
        item?.flash();
    }

    /// A new entry is to be typed.
    function startNew() {
        section.focusTitle();
    }

    color: Theme.bg
    Component.onCompleted: isReady = true

    DocumentLibraryViewModel {
        id: viewModel

        store: PlannerStore
        desktop: DocumentDesktop
        onEditRequested: documentId => screen.editRequested(documentId)
        onAdded: row => {
            const item = list.itemAtIndex(row) as DocumentListItem;
            if (item)
                item.flash();
        }
    }

    ListPage {
        id: list

        anchors.fill: parent
        belowRows: section.height
        model: viewModel.rows

        DocumentHeader {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            documents: viewModel
        }

        delegate: DocumentListItem {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            documents: viewModel
            onRemoved: (row, kind) => {
                viewModel.remove(row);
                screen.handFocusOn(row, kind);
            }
            onRestored: row => {
                viewModel.restore(row);
                screen.handFocusOn(row, DocumentRow.Deleted);
            }
            onDestroyRequested: row => dialog.askFor(row, kind, title)
        }
    }

    DestroyDialog {
        id: dialog

        property int row: 0
        property int kind: DocumentRow.Deleted

        function askFor(row: int, kind: int, title: string) {
            dialog.row = row;
            dialog.kind = kind;
            ask(kind === DocumentRow.Deleted ? viewModel.documentId(row) : "", title);
        }

        onConfirmed: documentId => {
            if (documentId === "")
                viewModel.destroyAll();
            else
                viewModel.destroy(documentId);
        }
        onOpenerGone: screen.handFocusOn(row, kind)
    }

    NewDocumentSection {
        id: section

        parent: list.contentItem
        y: list.originY + list.contentHeight
        width: list.width
        columnX: list.columnX
        columnWidth: list.columnWidth
        documents: viewModel

        // With the rows above it.
        Behavior on y {
            enabled: screen.isReady

            NumberAnimation {
                duration: Theme.disclose
                easing.type: Easing.OutCubic
            }
        }
    }
}

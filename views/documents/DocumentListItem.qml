import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// A row of the documents screen: the header of a group, a document, or the line of an empty group. Each draws its part
/// of the card.
Item {
    id: row

    required property int index
    required property int kind
    required property string title
    required property string note
    required property bool isExpanded
    required property bool isEditing
    required property bool isLast
    required property real columnX
    required property real columnWidth
    required property DocumentLibraryViewModel documents

    readonly property bool isHeader: kind === DocumentRow.Uncategorized || kind === DocumentRow.Category || kind === DocumentRow.RecentlyDeleted

    signal removed(int row, int kind)
    signal restored(int row)
    /// The document, or all of the group, is to be removed for good.
    signal destroyRequested(int row)

    /// Focuses the row's Delete, or the header of the documents without a category.
    function takeFocus() {
        switch (kind) {
        case DocumentRow.Document:
            (content.item as DocumentItem).focusDelete();
            break;
        case DocumentRow.Category:
            (content.item as CategoryHeader).focusDelete();
            break;
        case DocumentRow.Deleted:
            (content.item as DeletedItem).takeFocus();
            break;
        case DocumentRow.RecentlyDeleted:
            (content.item as DeletedHeader).takeFocus();
            break;
        default:
            (content.item as Item).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    /// Puts the focus on what opens the document of the row.
    function focusTitle() {
        (content.item as DocumentItem)?.focusTitle();
    }

    /// Tints the row for a moment: it is new.
    function flash() {
        slice.flash();
    }

    height: Theme.groupHeight

    CardSlice {
        id: slice

        x: row.columnX
        width: row.columnWidth
        height: parent.height
        isFirst: row.kind === DocumentRow.Uncategorized
        isLast: row.isLast
    }

    Loader {
        id: content

        x: row.columnX
        width: row.columnWidth
        height: parent.height
        sourceComponent: {
            switch (row.kind) {
            case DocumentRow.Uncategorized:
                return uncategorized;
            case DocumentRow.Category:
                return category;
            case DocumentRow.Document:
                return document;
            case DocumentRow.RecentlyDeleted:
                return recentlyDeleted;
            case DocumentRow.Deleted:
                return deleted;
            default:
                return noDocuments;
            }
        }
    }

    Separator {
        x: row.columnX + (row.isHeader ? 1 : 46)
        width: row.columnX + row.columnWidth - 1 - x
        visible: row.kind !== DocumentRow.Uncategorized
    }

    // qmllint disable unqualified
    Component {
        id: uncategorized

        DisclosureHeader {
            text: Language.text("未分类", "Uncategorized")
            isOpen: row.isExpanded
            onClicked: row.documents.setExpanded(row.index, !row.isExpanded)
        }
    }

    Component {
        id: category

        CategoryHeader {
            title: row.title
            isExpanded: row.isExpanded
            isEditing: row.isEditing
            onExpansionRequested: isOpen => row.documents.setExpanded(row.index, isOpen)
            onEditingRequested: isOn => row.documents.setEditing(row.index, isOn)
            onRenamed: name => row.documents.renameCategory(row.index, name)
            onRemoved: row.removed(row.index, row.kind)
        }
    }

    Component {
        id: document

        DocumentItem {
            title: row.title
            isLast: row.isLast
            onOpened: row.documents.openDocument(row.index)
            onRemoved: row.removed(row.index, row.kind)
        }
    }

    Component {
        id: recentlyDeleted

        DeletedHeader {
            note: row.note
            isExpanded: row.isExpanded
            onExpansionRequested: isOpen => row.documents.setExpanded(row.index, isOpen)
            onDestroyAllRequested: row.destroyRequested(row.index)
        }
    }

    Component {
        id: deleted

        DeletedItem {
            title: row.title
            note: row.note
            isLast: row.isLast
            onRestored: row.restored(row.index)
            onDestroyRequested: row.destroyRequested(row.index)
        }
    }

    Component {
        id: noDocuments

        Item {
            AppText {
                x: 46
                width: parent.width - x - 16
                anchors.verticalCenter: parent.verticalCenter
                text: Language.text("暂无文档", "No documents")
                token: Theme.control
                color: Theme.textSecondary
            }
        }
    }
    // qmllint enable unqualified
}

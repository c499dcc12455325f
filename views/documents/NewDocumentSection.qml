import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// The foot of the documents screen: the form for a new document.
Item {
    id: section

    required property real columnX
    required property real columnWidth
    required property DocumentLibraryViewModel documents

    function focusTitle() {
        titleField.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    height: titleField.y + titleField.height

    Separator {
        id: line

        x: section.columnX
        y: 20
        width: section.columnWidth
    }

    HeadingText {
        id: heading

        x: section.columnX
        y: line.y + 18
        width: section.columnWidth
        text: Language.text("新建文档", "New document")
    }

    AppTextField {
        id: titleField

        x: section.columnX
        y: heading.y + heading.height + 10
        width: Math.min(420, section.columnWidth - categoryBox.width - newButton.width - 20)
        placeholderText: Language.text("新建 Markdown 文档", "New Markdown document")
        text: section.documents.documentTitle
        onTextEdited: section.documents.documentTitle = text
        onAccepted: section.documents.addDocument()
    }
    AppComboBox {
        id: categoryBox

        x: titleField.x + titleField.width + 10
        y: titleField.y
        width: 150
        name: Language.text("分类", "Category")
        model: section.documents.categories
        currentIndex: section.documents.selectedCategory
        onActivated: index => section.documents.selectedCategory = index
    }
    AppButton {
        id: newButton

        x: categoryBox.x + categoryBox.width + 10
        y: titleField.y
        kind: AppButton.Primary
        text: Language.text("新建", "New")
        onClicked: {
            if (section.documents.documentTitle.trim() === "")
                titleField.forceActiveFocus(Qt.OtherFocusReason);
            section.documents.addDocument();
        }
    }
}

import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// The head of the documents screen: its title, where the documents live, import, and the form for a category.
Item {
    id: head

    required property real columnX
    required property real columnWidth
    required property DocumentLibraryViewModel documents

    function addCategory() {
        documents.addCategory();
        nameField.forceActiveFocus();
    }

    height: nameField.y + nameField.height + 16

    PageTitle {
        x: head.columnX
        y: Theme.pagePadding
        width: head.columnWidth
        text: Language.text("文档", "Documents")
    }

    LocationRow {
        id: location

        x: head.columnX
        y: Theme.pagePadding + Theme.pageTitle.line + Theme.pageGap
        width: head.columnWidth
        path: head.documents.saveLocation
    }

    Row {
        id: actions

        x: head.columnX
        y: location.y + location.height + 16
        spacing: 8

        AppButton {
            text: Language.text("导入 Markdown", "Import Markdown")
            onClicked: head.documents.importMarkdown()
        }
        AppButton {
            text: Language.text("设置保存位置", "Set save location")
            onClicked: head.documents.chooseSaveLocation()
        }
    }

    AppText {
        id: message

        x: head.columnX
        y: actions.y + actions.height + 10
        width: head.columnWidth
        visible: text !== ""
        text: head.documents.saveLocationMessage
        token: Theme.caption
        color: Theme.destructive
        isMultiline: true
        Accessible.role: Accessible.StatusBar
    }

    HeadingText {
        id: heading

        x: head.columnX
        y: (message.visible ? message.y + message.height : actions.y + actions.height) + Theme.pageGap
        width: head.columnWidth
        text: Language.text("分类", "Categories")
    }

    AppTextField {
        id: nameField

        x: head.columnX
        y: heading.y + heading.height + 10
        width: Math.min(420, head.columnWidth - addButton.width - 10)
        placeholderText: Language.text("新建分类", "New category")
        text: head.documents.categoryName
        onTextEdited: head.documents.categoryName = text
        onAccepted: head.addCategory()
    }
    AppButton {
        id: addButton

        x: nameField.x + nameField.width + 10
        y: nameField.y
        text: Language.text("添加", "Add")
        onClicked: head.addCategory()
    }
}

import QtQuick
import QtQuick.Layouts
import Tessaly.Documents
import Tessaly.Ui

/// The head of the editor: the document's name and category, the mode, and what can be done with it.
RowLayout {
    id: toolbar

    required property MarkdownEditorModel editor
    /// Whether the two buttons with icons show no text.
    required property bool isNarrow

    /// A button was pressed; the focus returns to the text.
    signal acted
    signal versionsRequested

    spacing: 12

    // Beside the row, not in it: it moves nothing.
    Rectangle {
        id: unsavedMark

        readonly property string text: Language.text("有未保存的修改", "Unsaved changes")

        parent: titleField
        x: -width - 2
        y: (titleField.height - height) / 2
        width: 8
        height: 8
        radius: 4
        color: Theme.accentText
        visible: toolbar.editor.hasUnsavedChanges
        Accessible.role: Accessible.Indicator
        Accessible.name: text

        HoverHandler {
            id: hover
        }
        AppToolTip {
            text: unsavedMark.text
            visible: hover.hovered
        }
    }

    AppTextField {
        id: titleField

        Layout.fillWidth: true
        Layout.minimumWidth: 120
        Layout.leftMargin: -2
        leftPadding: 9
        font.pixelSize: Theme.documentTitle.size
        font.weight: Theme.documentTitle.weight
        text: toolbar.editor.title
        onTextEdited: toolbar.editor.title = text
        placeholderText: Language.text("文档名称", "Document name")
        // The input method handles it.
        Keys.onEscapePressed: event => event.accepted = true

        background: FieldFrame {
            visible: titleField.hovered || titleField.activeFocus
            isFocused: titleField.activeFocus
        }
    }

    IconButton {
        iconName: "history"
        text: Language.text("历史版本", "Earlier versions")
        enabled: toolbar.editor.isEditable
        onClicked: toolbar.versionsRequested()
    }
    AppComboBox {
        Layout.preferredWidth: 140
        name: Language.text("分类", "Category")
        model: toolbar.editor.categories
        currentIndex: toolbar.editor.category
        onActivated: index => toolbar.editor.category = index
    }
    SegmentedControl {
        Layout.preferredWidth: 210
        name: Language.text("模式", "Mode")
        labels: [Language.text("编辑", "Edit"), Language.text("预览", "Preview"), Language.text("实时", "Live")]
        currentIndex: toolbar.editor.mode
        onChosen: index => toolbar.editor.mode = index
    }
    ToolbarButton {
        isNarrow: toolbar.isNarrow
        label: Language.text("插入图片", "Insert image")
        enabled: toolbar.editor.isEditable
        iconName: "image"
        onClicked: {
            toolbar.acted();
            toolbar.editor.insertImage();
        }
    }
    ToolbarButton {
        isNarrow: toolbar.isNarrow
        label: Language.text("复制到公众号", "Copy for WeChat")
        enabled: toolbar.editor.isEditable
        iconName: "copy"
        onClicked: {
            toolbar.acted();
            toolbar.editor.copyForWeChat();
        }
    }
    AppButton {
        kind: AppButton.Primary
        text: Language.text("保存", "Save")
        isDone: savedSign.running
        Accessible.description: isDone ? Language.text("已保存", "Saved") : toolbar.editor.hasUnsavedChanges ? unsavedMark.text : ""
        onClicked: {
            toolbar.acted();
            toolbar.editor.save();
        }
    }
    AppButton {
        text: Language.text("关闭", "Close")
        onClicked: toolbar.editor.close()
    }

    Timer {
        id: savedSign

        interval: Theme.done
    }
    Connections {
        function onSaved() {
            savedSign.restart();
        }

        target: toolbar.editor
    }
}

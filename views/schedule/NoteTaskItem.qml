import QtQuick
import Tessaly.Ui

/// One task in the edit form: title, done, delete.
Item {
    id: item

    required property int index
    required property string title
    required property bool isComplete

    signal renamed(string title)
    signal ticked(bool isComplete)
    signal deleteRequested

    function focusDelete(reason: int) {
        deleteAction.forceActiveFocus(reason);
    }

    height: Theme.controlHeight

    HoverHandler {
        id: hover
    }

    AppTextField {
        width: doneToggle.x - 10
        name: placeholderText + " " + (item.index + 1)
        placeholderText: Language.text("任务", "Task")
        text: item.title
        onTextEdited: item.renamed(text)
    }

    Toggle {
        id: doneToggle

        x: deleteAction.x - 10 - width
        text: Language.text("完成", "Done")
        checked: item.isComplete
        Accessible.name: text + ", " + item.title
        onToggled: item.ticked(checked)
    }

    RowAction {
        id: deleteAction

        // The text, not the invisible outline, ends at the column's edge.
        x: item.width - width + 8
        anchors.verticalCenter: parent.verticalCenter
        text: Language.text("删除", "Delete")
        itemTitle: item.title
        isDestructive: true
        isRowActive: hover.hovered
        onClicked: item.deleteRequested()
    }
}

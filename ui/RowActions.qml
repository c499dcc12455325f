import QtQuick
import Tessaly.Ui

/// Edit and Delete at the end of a row. While the row is edited, Edit is Done.
Row {
    id: actions

    required property string itemTitle
    property bool isRowActive: false
    property bool isEditing: false
    property bool isDeleteShown: true
    /// Widths of the columns in which they stand at the right; 0 for their own widths.
    property real editColumn: 0
    property real deleteColumn: 0
    readonly property bool hasFocus: editAction.activeFocus || deleteAction.activeFocus
    readonly property bool hasVisualFocus: editAction.visualFocus || deleteAction.visualFocus

    signal editRequested
    signal deleteRequested

    function focusEdit(reason: int) {
        editAction.forceActiveFocus(reason);
    }

    function focusDelete(reason: int) {
        deleteAction.forceActiveFocus(reason);
    }

    spacing: 2

    Item {
        width: actions.editColumn || editAction.width
        height: editAction.height

        RowAction {
            id: editAction

            anchors.right: parent.right
            text: actions.isEditing ? Language.text("完成", "Done") : Language.text("编辑", "Edit")
            itemTitle: actions.itemTitle
            isAccented: actions.isEditing
            isRowActive: actions.isRowActive || visualFocus
            onClicked: actions.editRequested()
        }
    }

    Item {
        width: actions.deleteColumn || deleteAction.width
        height: deleteAction.height
        visible: actions.isDeleteShown

        RowAction {
            id: deleteAction

            anchors.right: parent.right
            text: Language.text("删除", "Delete")
            itemTitle: actions.itemTitle
            isDestructive: true
            isRowActive: actions.isRowActive || visualFocus
            onClicked: actions.deleteRequested()
        }
    }
}

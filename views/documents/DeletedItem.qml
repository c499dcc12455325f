import QtQuick
import Tessaly.Ui

/// The row of a deleted document.
Item {
    id: row

    required property string title
    required property string note
    required property bool isLast

    readonly property bool isActive: hover.hovered || restoreAction.visualFocus || destroyAction.visualFocus

    signal restored
    signal destroyRequested

    function takeFocus() {
        restoreAction.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Theme.groupHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: title + ", " + note

    HoverHandler {
        id: hover
    }

    Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - (row.isLast ? 2 : 1)
        radius: row.isLast ? Theme.cardRadius - 1 : 0
        color: Theme.hover
        visible: row.isActive
    }

    AppText {
        x: 46
        width: noteText.x - x - 12
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        color: Theme.textSecondary
        Accessible.ignored: true

        ElidedTip {}
    }

    AppText {
        id: noteText

        x: actions.x - width - 16
        anchors.verticalCenter: parent.verticalCenter
        text: row.note
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    Row {
        id: actions

        x: row.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        RowAction {
            id: restoreAction

            text: Language.text("恢复", "Restore")
            itemTitle: row.title
            isRowActive: row.isActive
            onClicked: row.restored()
        }

        RowAction {
            id: destroyAction

            text: Language.text("彻底删除", "Delete forever")
            itemTitle: row.title
            isDestructive: true
            isRowActive: row.isActive
            onClicked: row.destroyRequested()
        }
    }
}

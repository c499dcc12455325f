import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// The row of a document: its title, which opens it, and what can be done with it.
Item {
    id: row

    required property string title
    required property bool isLast

    readonly property bool isActive: hover.hovered || opener.visualFocus || editAction.visualFocus || deleteAction.visualFocus

    signal opened
    signal removed

    function focusDelete() {
        deleteAction.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Theme.groupHeight

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

    T.AbstractButton {
        id: opener

        width: editAction.x - 12
        height: parent.height
        text: row.title
        focusPolicy: Qt.StrongFocus
        Accessible.onPressAction: clicked()
        Accessible.name: text
        Keys.onReturnPressed: event => KeyPress.press(opener, event)
        Keys.onEnterPressed: event => KeyPress.press(opener, event)
        onClicked: row.opened()

        contentItem: Item {
            AppText {
                x: 46
                width: parent.width - x
                anchors.verticalCenter: parent.verticalCenter
                text: opener.text
                Accessible.ignored: true
            }
        }
        background: Item {
            FocusRing {
                visible: opener.visualFocus
                anchors.margins: 2
                anchors.leftMargin: 38
                gap: -4
            }
        }
    }

    RowAction {
        id: editAction

        x: deleteAction.x - 2 - width
        anchors.verticalCenter: parent.verticalCenter
        text: Language.text("编辑", "Edit")
        itemTitle: row.title
        isRowActive: row.isActive
        onClicked: row.opened()
    }
    RowAction {
        id: deleteAction

        x: row.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        text: Language.text("删除", "Delete")
        itemTitle: row.title
        isDestructive: true
        isRowActive: row.isActive
        onClicked: row.removed()
    }
}

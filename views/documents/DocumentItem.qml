import QtQuick
import Tessaly.Ui

/// The row of a document: its title, which opens it, and what can be done with it.
Item {
    id: row

    required property string title
    required property bool isLast

    readonly property bool isActive: hover.hovered || opener.visualFocus || actions.hasVisualFocus

    signal opened
    signal removed

    function focusDelete() {
        actions.focusDelete(Qt.TabFocusReason);
    }

    function focusTitle() {
        opener.forceActiveFocus(Qt.TabFocusReason);
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

    PushButton {
        id: opener

        width: actions.x - 12
        height: parent.height
        text: row.title
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

    RowActions {
        id: actions

        x: row.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        itemTitle: row.title
        isRowActive: row.isActive
        onEditRequested: row.opened()
        onDeleteRequested: row.removed()
    }
}

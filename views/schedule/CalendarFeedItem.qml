import QtQuick
import Tessaly.Ui

/// A linked calendar with its last update, to be updated or deleted.
Item {
    id: row

    required property int index
    required property string name
    required property string lastUpdated

    signal updateRequested
    signal deleteRequested

    function focusDelete(reason: int) {
        deleteButton.forceActiveFocus(reason);
    }

    implicitHeight: Theme.rowHeight

    Separator {
        width: parent.width
        visible: row.index > 0
    }

    Icon {
        id: mark

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "link"
        color: Theme.textSecondary
    }

    AppText {
        id: nameLabel

        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 128
        text: row.name
        token: Theme.button

        ElidedTip {}
    }

    AppText {
        anchors.left: nameLabel.right
        anchors.leftMargin: 12
        anchors.right: buttons.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: row.lastUpdated
        token: Theme.caption
        color: Theme.textSecondary
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12

        AppButton {
            isSmall: true
            isRaised: true
            text: Language.text("更新", "Update")
            Accessible.name: text + ", " + row.name
            onClicked: row.updateRequested()
        }

        AppButton {
            id: deleteButton

            isSmall: true
            isRaised: true
            kind: AppButton.Destructive
            text: Language.text("删除", "Delete")
            Accessible.name: text + ", " + row.name
            onClicked: row.deleteRequested()

            PressGuard {
                anchors.fill: parent
            }
        }
    }
}

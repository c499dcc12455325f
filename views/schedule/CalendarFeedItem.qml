import QtQuick
import Tessaly.Ui

/// A linked calendar with its last update, to be updated or deleted. Beneath it why the last update failed, if it did.
Item {
    id: row

    required property int index
    required property string name
    required property string lastUpdated
    required property string failure

    signal updateRequested
    signal deleteRequested

    function focusDelete(reason: int) {
        deleteButton.forceActiveFocus(reason);
    }

    implicitHeight: failure === "" ? Theme.rowHeight : failureText.y + failureText.height + 8

    Separator {
        width: parent.width
        visible: row.index > 0
    }

    Icon {
        id: mark

        x: 12
        anchors.verticalCenter: nameLabel.verticalCenter
        name: row.failure === "" ? "link" : "circle-alert"
        color: row.failure === "" ? Theme.textSecondary : Theme.destructive
    }

    AppText {
        id: nameLabel

        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.right: updateTime.left
        anchors.rightMargin: 12
        y: row.failure === "" ? (Theme.rowHeight - height) / 2 : 8
        text: row.name
        token: Theme.button

        ElidedTip {}
    }

    AppText {
        id: updateTime

        anchors.right: buttons.left
        anchors.rightMargin: 12
        anchors.verticalCenter: nameLabel.verticalCenter
        width: Math.ceil(implicitWidth)
        text: row.lastUpdated
        token: Theme.caption
        color: Theme.textSecondary
    }

    AppText {
        id: failureText

        anchors.left: nameLabel.left
        anchors.right: updateTime.right
        anchors.top: nameLabel.bottom
        visible: row.failure !== ""
        isMultiline: true
        maximumLineCount: 2
        text: row.failure === "" ? "" : Language.text("更新失败：", "Update failed: ") + row.failure
        token: Theme.caption
        color: Theme.destructive

        ElidedTip {}
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

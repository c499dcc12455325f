import QtQuick
import Tessaly.Ui

/// A linked calendar and how it is: when it was last read and what that brought, or why it cannot be read.
Item {
    id: row

    required property int index
    required property string name
    required property string health
    required property bool isFailing

    signal detailsRequested
    signal updateRequested
    signal deleteRequested

    function focusDetails(reason: int) {
        detailsButton.forceActiveFocus(reason);
    }

    function focusDelete(reason: int) {
        deleteButton.forceActiveFocus(reason);
    }

    implicitHeight: health === "" ? 48 : healthText.y + healthText.height + 10

    Separator {
        width: parent.width
        visible: row.index > 0
    }

    Icon {
        id: mark

        x: 12
        anchors.verticalCenter: nameLabel.verticalCenter
        name: row.isFailing ? "circle-alert" : "link"
        color: row.isFailing ? Theme.destructive : Theme.textSecondary
    }

    AppText {
        id: nameLabel

        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.right: buttons.left
        anchors.rightMargin: 12
        y: row.health === "" ? (48 - height) / 2 : 11
        text: row.name
        token: Theme.button

        ElidedTip {}
    }

    AppText {
        id: healthText

        anchors.left: nameLabel.left
        anchors.right: nameLabel.right
        anchors.top: nameLabel.bottom
        visible: row.health !== ""
        isMultiline: true
        maximumLineCount: 2
        text: row.health
        token: Theme.caption
        color: row.isFailing ? Theme.destructive : Theme.textSecondary

        ElidedTip {}
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 8
        y: 10
        spacing: 8

        AppButton {
            id: detailsButton

            isSmall: true
            isRaised: true
            text: Language.text("详情", "Details")
            Accessible.name: text + ", " + row.name
            onClicked: row.detailsRequested()
        }

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

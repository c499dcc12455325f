import QtQuick
import Tessaly.Ui
import Tessaly.Versions

/// A row of the box: the head of an area, a record, or what opens the rest of an area.
Item {
    id: row

    required property int index
    required property int kind
    required property string title
    required property string detail
    required property int restoration
    required property bool isChecked
    required property bool isPartial
    required property bool isOpen
    required property bool isVoid
    readonly property bool isArea: kind === VersionsModel.AreaRow
    readonly property bool isRecord: kind === VersionsModel.RecordRow
    /// What a restore does with the record, as words.
    readonly property string verb: restoration === VersionsModel.BringBack ? Language.text("找回", "Bring back") : restoration === VersionsModel.Change ? Language.text("更改", "Change") : Language.text("移除", "Remove")

    signal checkChosen(isChecked: bool)
    signal openChosen

    implicitHeight: isArea ? 36 : 32

    Rectangle {
        anchors.fill: parent
        color: row.isArea ? Theme.inset : Theme.transparent
    }

    AppCheckBox {
        id: box

        x: row.isArea ? 12 : 38
        anchors.verticalCenter: parent.verticalCenter
        visible: row.isArea || row.isRecord
        enabled: !row.isVoid
        opacity: enabled ? 1 : 0.5
        checked: row.isChecked
        isPartial: row.isPartial
        Accessible.name: row.isRecord ? row.verb + ", " + row.title : row.title
        Accessible.description: row.detail
        onToggled: {
            row.checkChosen(checked);
            checked = Qt.binding(() => row.isChecked);
        }
    }

    Icon {
        x: 64
        anchors.verticalCenter: parent.verticalCenter
        visible: row.isRecord
        size: 14
        name: row.restoration === VersionsModel.BringBack ? "plus" : row.restoration === VersionsModel.Change ? "pencil" : "minus"
        color: row.restoration === VersionsModel.BringBack ? Theme.success : row.restoration === VersionsModel.Change ? Theme.textSecondary : Theme.destructive
    }

    PushButton {
        id: opener

        x: row.isArea ? 34 : 0
        width: parent.width - x
        height: parent.height
        visible: !row.isRecord
        enabled: !row.isVoid
        text: row.title
        Accessible.description: row.isArea ? row.detail : ""
        onClicked: row.openChosen()
        background: FocusRing {
            visible: opener.visualFocus
            gap: -4
        }
        contentItem: Item {
            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: row.isArea
                name: "chevron-right"
                rotation: row.isOpen ? 90 : 0
                color: row.isVoid ? Theme.textDisabled : Theme.textTertiary
            }
        }
    }

    AppText {
        id: label

        x: row.isArea ? 61 : 89
        width: parent.width - x - what.width - 24
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        token: row.isArea ? Theme.buttonPrimary : row.isRecord ? Theme.control : Theme.caption
        color: row.isArea || row.isRecord ? Theme.text : Theme.textSecondary
        Accessible.ignored: true

        ElidedTip {}
    }

    AppText {
        id: what

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: row.detail
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    Separator {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}

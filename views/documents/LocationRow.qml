import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// Where the documents live: a label and a path that can be selected and elides in the middle.
Rectangle {
    id: row

    required property string path

    height: Theme.groupHeight
    radius: Theme.popupRadius
    color: Theme.inset
    border.width: 1
    border.color: Theme.border

    Icon {
        id: icon

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        name: "folder"
        color: Theme.textTertiary
    }
    AppText {
        id: label

        x: icon.x + icon.width + 10
        anchors.verticalCenter: parent.verticalCenter
        text: Language.text("当前位置：", "Location: ")
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    T.TextField {
        id: field

        readonly property bool showsElided: !activeFocus && contentWidth > width

        x: label.x + label.width
        width: parent.width - 16 - x
        height: parent.height
        padding: 0
        // As in AppTextField.
        topPadding: Math.max(0, contentHeight - Math.ceil(metrics.height))
        verticalAlignment: TextInput.AlignVCenter
        readOnly: true
        selectByMouse: true
        text: row.path
        font.family: Theme.control.family
        font.pixelSize: Theme.control.size
        color: showsElided ? Theme.transparent : Theme.text
        selectionColor: Theme.accentSoft
        selectedTextColor: Theme.text
        Accessible.name: label.text + row.path
        onActiveFocusChanged: if (!activeFocus)
            deselect()

        FontMetrics {
            id: metrics

            font: field.font
        }
        FocusRing {
            visible: field.activeFocus && (field.focusReason === Qt.TabFocusReason || field.focusReason === Qt.BacktabFocusReason)
            anchors.margins: 4
            anchors.leftMargin: -6
            anchors.rightMargin: -6
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            visible: field.showsElided
            text: row.path
            token: Theme.control
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
    }
}

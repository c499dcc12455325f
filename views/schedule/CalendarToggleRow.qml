import QtQuick
import Tessaly.Ui

/// One check box of a list of calendars: an account's heading or a calendar with its colour.
Item {
    id: row

    required property int index
    required property string title
    required property string colorKey
    required property bool isAccount
    required property bool isChecked
    required property bool isPartial
    property bool isPlain: false
    property bool isFirst: false
    property bool isLast: false

    signal chosen(bool isChosen)

    height: isAccount ? 36 : 34

    Rectangle {
        anchors.fill: parent
        visible: row.isAccount
        radius: row.isFirst || row.isLast ? Theme.popupRadius - 1 : 0
        color: Theme.inset

        Rectangle {
            width: parent.width
            y: row.isFirst ? parent.height / 2 : 0
            height: parent.height / (row.isFirst && row.isLast ? 1 : 2)
            visible: row.isFirst !== row.isLast
            color: parent.color
        }
    }

    Separator {
        width: parent.width
        visible: !row.isFirst
    }

    AppCheckBox {
        id: box

        x: row.isAccount || row.isPlain ? 12 : 38
        // Up to the row's end: the title and the mark belong to the target.
        width: row.width - x
        height: row.height
        anchors.verticalCenter: parent.verticalCenter
        checked: row.isChecked
        isPartial: row.isPartial
        Accessible.name: row.title
        onToggled: row.chosen(checked)
    }

    ColorMark {
        id: mark

        x: box.x + 26
        anchors.verticalCenter: parent.verticalCenter
        visible: row.colorKey !== ""
        color: visible ? Theme.scheduleColor(row.colorKey) : Theme.transparent
    }

    AppText {
        x: mark.visible ? mark.x + 20 : box.x + 26
        width: row.width - x - 12
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        token: row.isAccount ? Theme.buttonPrimary : Theme.control
        Accessible.ignored: true

        ElidedTip {}
    }
}

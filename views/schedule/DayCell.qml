import QtQuick
import Tessaly.Ui

/// A day of the month grid; choosing it makes it the focus day.
PushButton {
    id: cell

    required property int index
    required property int number
    required property bool isToday
    required property bool isFocused
    required property bool isOutside
    required property string spokenName

    Accessible.name: spokenName
    Accessible.description: isToday ? Language.text("今天", "Today") : ""
    Accessible.selectable: true
    Accessible.selected: isFocused

    topInset: 4
    leftInset: 3
    rightInset: 3
    bottomInset: 3
    background: Rectangle {
        radius: Theme.blockRadius
        color: cell.isFocused ? Theme.focusDayCellFill : cell.down ? Theme.pressed : cell.hovered ? Theme.hover : Theme.transparent
    }

    contentItem: Item {
        Rectangle {
            x: 7
            y: 5
            width: 24
            height: 24
            radius: 12
            color: cell.isToday ? Theme.accent : Theme.transparent

            LineText {
                anchors.centerIn: parent
                text: cell.number
                color: cell.isToday ? Theme.inkOnAccent : cell.isOutside ? Theme.textTertiary : Theme.text
                token: cell.isToday ? Theme.captionBold : cell.isOutside ? Theme.caption : Theme.captionMedium
            }
        }
    }
}

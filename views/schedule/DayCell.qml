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
    required property string note
    required property string narrowNote
    required property bool isNoteSpecial
    required property int dayOff
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

        // Only the calendar of China has notes.
        Loader {
            x: 31
            y: 5
            width: parent.width - x - 5
            height: 24
            active: cell.note !== ""
            sourceComponent: notes
        }
    }

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    Component {
        id: notes

        Item {
            DayOffMark {
                id: mark

                x: 3
                anchors.verticalCenter: parent.verticalCenter
                dayOff: cell.dayOff
            }

            DayNote {
                x: mark.visible ? mark.x + mark.width + 4 : 0
                width: parent.width - x
                height: parent.height
                note: cell.note
                narrowNote: cell.narrowNote
                explanation: cell.spokenName
                isSpecial: cell.isNoteSpecial && !cell.isOutside
            }
        }
    }

    // qmllint enable unqualified
}

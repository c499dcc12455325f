import QtQuick
import Tessaly.Ui

/// Weekday and day of the month above a day column; choosing it makes the day the focus day.
PushButton {
    id: day

    required property int index
    required property string weekday
    required property int number
    required property bool isToday
    required property bool isFocused
    required property string note
    required property string narrowNote
    required property bool isNoteSpecial
    required property int dayOff
    required property string spokenName

    Accessible.name: spokenName
    Accessible.description: isToday ? Language.text("今天", "Today") : ""
    Accessible.selectable: true
    Accessible.selected: isFocused

    background: Rectangle {
        radius: Theme.smallRadius
        color: day.isFocused ? Theme.focusDayHeader : day.down ? Theme.pressed : day.hovered ? Theme.hover : Theme.transparent

        FocusRing {
            visible: day.visualFocus
            targetRadius: Theme.smallRadius
            gap: -2
        }
    }

    contentItem: Item {
        AppText {
            y: 2
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: day.weekday
            color: Theme.textSecondary
            token: Theme.mini
            font.weight: Font.Medium
            Accessible.ignored: true
        }

        Rectangle {
            x: Math.round((parent.width - width) / 2)
            y: 15
            width: 28
            height: 28
            radius: 14
            color: day.isToday ? Theme.accent : Theme.transparent

            AppText {
                anchors.centerIn: parent
                text: day.number
                color: day.isToday ? Theme.inkOnAccent : Theme.text
                token: Theme.heading
                Accessible.ignored: true
            }
        }

        // Only the calendar of China has notes.
        Loader {
            y: 44
            width: parent.width
            active: day.note !== ""
            sourceComponent: notes
        }
    }

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    Component {
        id: notes

        Item {
            DayNote {
                x: 2
                width: parent.width - 4
                height: Theme.mini.line
                alignment: Text.AlignHCenter
                note: day.note
                narrowNote: day.narrowNote
                explanation: day.spokenName
                isSpecial: day.isNoteSpecial
            }

            DayOffMark {
                y: -42
                anchors.right: parent.right
                anchors.rightMargin: 4
                dayOff: day.dayOff
            }
        }
    }

    // qmllint enable unqualified
}

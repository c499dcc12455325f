import QtQuick
import Tessaly.Ui

/// A day of the month grid; choosing it makes it the focus day.
PushButton {
    id: cell

    required property int index
    required property string weekday
    required property int number
    required property bool isToday
    required property bool isFocused
    required property bool isOutside
    required property string spokenName
    property bool isLastColumn: false
    /// Cells of the first week carry the weekday names above them.
    property bool showsWeekday: false
    property real weekdayHeight: 0

    Accessible.name: spokenName
    Accessible.description: isToday ? Language.text("今天", "Today") : ""
    Accessible.selectable: true
    Accessible.selected: isFocused

    AppText {
        visible: cell.showsWeekday
        x: 12
        y: -cell.weekdayHeight
        height: cell.weekdayHeight
        text: cell.weekday
        color: Theme.textSecondary
        token: Theme.captionMedium
        Accessible.ignored: true
    }

    background: Item {
        Separator {
            width: parent.width
            color: Theme.gridLine
        }

        Separator {
            anchors.right: parent.right
            width: 1
            height: parent.height
            visible: !cell.isLastColumn
            color: Theme.gridLine
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            anchors.topMargin: 4
            radius: Theme.blockRadius
            color: cell.isFocused ? Theme.focusDayCellFill : cell.down ? Theme.pressed : cell.hovered ? Theme.hover : Theme.transparent

            FocusRing {
                visible: cell.visualFocus
                targetRadius: Theme.blockRadius
                gap: -2
            }
        }
    }

    contentItem: Item {
        Rectangle {
            x: 7
            y: 5
            width: 24
            height: 24
            radius: 12
            color: cell.isToday ? Theme.accent : Theme.transparent

            AppText {
                anchors.centerIn: parent
                text: cell.number
                color: cell.isToday ? Theme.inkOnAccent : cell.isOutside ? Theme.textTertiary : Theme.text
                token: cell.isToday ? Theme.captionBold : cell.isOutside ? Theme.caption : Theme.captionMedium
                Accessible.ignored: true
            }
        }
    }
}

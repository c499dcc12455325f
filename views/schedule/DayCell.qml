import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A day of the month grid; choosing it makes it the focus day.
T.AbstractButton {
    id: cell

    required property int index
    required property string weekday
    required property int number
    required property bool isToday
    required property bool isFocused
    required property bool isOutside
    required property string spokenName
    required property bool isLastColumn
    /// Cells of the first week carry the weekday names above them.
    required property bool showsWeekday
    required property real weekdayHeight

    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()
    Accessible.role: Accessible.Button
    Accessible.name: spokenName
    Accessible.selected: isFocused
    Accessible.description: isToday ? Language.text("今天", "Today") : ""

    Text {
        visible: cell.showsWeekday
        x: 12
        y: -cell.weekdayHeight
        height: cell.weekdayHeight
        verticalAlignment: Text.AlignVCenter
        text: cell.weekday
        color: Theme.text2
        font: Theme.captionMedium
        Accessible.ignored: true
    }

    background: Item {
        Rectangle {
            width: parent.width
            height: 1
            color: Theme.gridLine
        }

        Rectangle {
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
            radius: Theme.radiusBlock
            color: cell.isFocused ? Theme.focusCell : cell.down ? Theme.pressed : cell.hovered ? Theme.hover
                 : "transparent"

            FocusRing {
                control: cell
                margin: 2
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
            color: cell.isToday ? Theme.accent : "transparent"

            Text {
                anchors.centerIn: parent
                text: cell.number
                color: cell.isToday ? Theme.onAccent : cell.isOutside ? Theme.text3 : Theme.text
                font: cell.isOutside ? Theme.caption : Theme.captionMedium
            }
        }
    }
}

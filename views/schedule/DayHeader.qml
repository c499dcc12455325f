import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// Weekday and day of the month above a day column; choosing it makes the day the focus day.
T.AbstractButton {
    id: day

    required property int index
    required property string weekday
    required property int number
    required property bool isToday
    required property bool isFocused
    required property string spokenName

    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()
    Accessible.role: Accessible.Button
    Accessible.name: spokenName
    Accessible.selected: isFocused
    Accessible.description: isToday ? Language.text("今天", "Today") : ""

    background: Rectangle {
        radius: Theme.radiusSmall
        color: day.isFocused ? Qt.alpha(Theme.accentText, 0.14) : day.down ? Theme.pressed
             : day.hovered ? Theme.hover : "transparent"

        FocusRing {
            control: day
        }
    }

    contentItem: Item {
        Text {
            width: parent.width
            y: 2
            horizontalAlignment: Text.AlignHCenter
            text: day.weekday
            color: Theme.text2
            font: Theme.miniMedium
        }

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 15
            width: 28
            height: 28
            radius: 14
            color: day.isToday ? Theme.accent : "transparent"

            Text {
                anchors.centerIn: parent
                text: day.number
                color: day.isToday ? Theme.onAccent : Theme.text
                font: Theme.heading
            }
        }
    }
}

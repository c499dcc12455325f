import QtQuick
import Tessaly.Ui

/// One schedule in a cell of the month grid: mark, start time, title.
Item {
    id: line

    required property int cellIndex
    required property int slot
    required property string title
    required property string startText
    required property string colorKey
    required property bool isOutside
    required property string spokenName
    /// In narrow cells the title fades instead of ending in dots.
    required property bool isNarrow
    required property color fill

    height: 18
    clip: isNarrow
    Accessible.role: Accessible.StaticText
    Accessible.name: spokenName

    ColorMark {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        size: 7
        color: Theme.scheduleColor(line.colorKey)
    }

    Text {
        id: time

        anchors.left: mark.right
        anchors.leftMargin: line.isNarrow ? 4 : 5
        anchors.verticalCenter: parent.verticalCenter
        text: line.startText
        color: Theme.text2
        font: Theme.mini
        Accessible.ignored: true
    }

    Text {
        anchors.left: time.right
        anchors.leftMargin: line.isNarrow ? 4 : 5
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: line.title
        color: line.isOutside ? Theme.text2 : Theme.text
        font: Theme.caption
        elide: line.isNarrow ? Text.ElideNone : Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    Rectangle {
        anchors.right: parent.right
        width: 9
        height: parent.height
        visible: line.isNarrow
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Qt.alpha(line.fill, 0)
            }
            GradientStop {
                position: 1
                color: line.fill
            }
        }
    }
}

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// One schedule in a cell of the month grid: mark, start time, title. In the last slot how many more there are.
Item {
    id: line

    required property int index
    required property int cellIndex
    required property int slot
    required property string title
    required property string startText
    required property string colorKey
    required property bool isOutside
    required property string spokenName
    /// In narrow cells the title fades instead of ending in dots.
    property bool isNarrow: false
    property color fill: Theme.card

    readonly property bool isMore: slot === 2
    readonly property real gap: isNarrow ? 4 : 5

    /// By assistive technology. The pointer presses the cell beneath.
    signal pressed

    visible: cellIndex >= 0
    height: isMore ? 13 : 18
    clip: isNarrow
    Accessible.role: isMore ? Accessible.Button : Accessible.StaticText
    Accessible.onPressAction: pressed()
    Accessible.name: spokenName

    ColorMark {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        visible: !line.isMore
        size: 7
        color: Theme.scheduleColor(line.colorKey)
    }

    LineText {
        id: time

        anchors.left: mark.right
        anchors.leftMargin: line.gap
        anchors.verticalCenter: parent.verticalCenter
        text: line.startText
        color: Theme.textSecondary
        token: Theme.mini
    }

    LineText {
        x: line.isMore ? 0 : time.x + (line.startText === "" ? 0 : time.width + line.gap)
        width: parent.width - x
        text: line.title
        color: line.isOutside || line.isMore ? Theme.textSecondary : Theme.text
        token: line.isMore ? Theme.mini : Theme.caption
        elide: line.isNarrow ? Text.ElideNone : Text.ElideRight

        ElidedTip {}
    }

    FadingEdge {
        anchors.right: parent.right
        height: parent.height
        visible: line.isNarrow
        fill: line.fill
    }
}

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
    property bool isNarrow: false
    property color fill: Theme.card

    readonly property real gap: isNarrow ? 4 : 5

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

    AppText {
        id: time

        anchors.left: mark.right
        anchors.leftMargin: line.gap
        anchors.verticalCenter: parent.verticalCenter
        text: line.startText
        color: Theme.textSecondary
        token: Theme.mini
        Accessible.ignored: true
    }

    AppText {
        anchors.left: time.right
        anchors.leftMargin: line.gap
        anchors.right: parent.right
        text: line.title
        color: line.isOutside ? Theme.textSecondary : Theme.text
        token: Theme.caption
        elide: line.isNarrow ? Text.ElideNone : Text.ElideRight
        Accessible.ignored: true

        ElidedTip {}
    }

    FadingEdge {
        anchors.right: parent.right
        height: parent.height
        visible: line.isNarrow
        fill: line.fill
    }
}

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A schedule in the week: a tint of its colour, a strip of the full colour, title and time as far as there is room.
T.AbstractButton {
    id: block

    required property int index
    required property int dayIndex
    required property real blockX
    required property real blockY
    required property real blockWidth
    required property real blockHeight
    required property string title
    required property string startText
    required property string timeRange
    required property string tag
    required property string colorKey
    required property bool isSelected
    required property string spokenName

    readonly property color fullColor: Theme.scheduleColor(colorKey)
    readonly property color tint: Qt.tint(Theme.card, Qt.alpha(fullColor, isSelected ? 0.36 : 0.16))
    readonly property color fill: Qt.tint(tint, Qt.alpha(Theme.text, down ? 0.08 : hovered ? 0.04 : 0))
    readonly property bool isNarrow: width < 72
    readonly property real textLeft: isNarrow ? 6 : 8
    readonly property real textRight: isNarrow ? 2 : 5
    readonly property string timeShown: height < 36 || width < 44 ? "" : width < 88 ? startText : timeRange

    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()
    Accessible.role: Accessible.Button
    Accessible.name: spokenName
    Accessible.selected: isSelected

    background: Rectangle {
        radius: Theme.radiusBlock
        color: block.fill
        border.width: block.isSelected ? 2 : 0
        border.color: block.fullColor

        Rectangle {
            width: 2 * radius
            height: parent.height
            radius: Theme.radiusBlock
            color: block.fullColor
        }

        Rectangle {
            x: 3
            y: parent.border.width
            width: 2 * parent.radius - x
            height: parent.height - 2 * y
            color: block.fill
        }

        FocusRing {
            control: block
            margin: -1
        }
    }

    contentItem: Item {
        clip: true
        visible: block.width >= 18

        Column {
            x: block.textLeft
            y: block.height < 26 ? (parent.height - height) / 2 : 5
            width: parent.width - x - block.textRight

            Text {
                width: parent.width
                text: block.title
                color: block.isSelected ? Theme.blockTextSelected : Theme.text
                font: Theme.blockTitle
                elide: block.isNarrow ? Text.ElideNone : Text.ElideRight
                textFormat: Text.PlainText
                lineHeight: 15
                lineHeightMode: Text.FixedHeight
            }

            Text {
                width: parent.width
                visible: text !== ""
                text: block.timeShown
                color: block.isSelected ? Theme.blockTextSelected : Theme.text2
                font: Theme.mini
                lineHeight: 13
                lineHeightMode: Text.FixedHeight
            }
        }

        Rectangle {
            anchors.right: parent.right
            anchors.rightMargin: block.textRight
            width: 9
            height: parent.height
            visible: block.isNarrow
            gradient: Gradient {
                orientation: Gradient.Horizontal

                GradientStop {
                    position: 0
                    color: Qt.alpha(block.fill, 0)
                }
                GradientStop {
                    position: 1
                    color: block.fill
                }
            }
        }
    }
}

import QtQuick
import Tessaly.Palette
import Tessaly.Ui

/// A row of the palette: what it adds, finds or does. The first of an area has the area's heading above it.
Item {
    id: row

    required property int index
    required property int kind
    required property string heading
    required property string icon
    required property string colorKey
    required property string title
    required property int titleStart
    required property int titleLength
    required property string part
    required property int partStart
    required property int partLength
    required property string detail
    property bool isCurrent: false
    readonly property bool isNothing: kind === PaletteModel.NothingRow
    readonly property alias body: body

    signal chosen
    signal pointed

    implicitHeight: body.y + body.height
    Accessible.role: Accessible.ListItem
    Accessible.name: [row.title, row.part, row.detail].filter(text => text !== "").join(", ") // qmllint disable
    Accessible.selectable: !isNothing
    Accessible.selected: isCurrent
    Accessible.onPressAction: chosen()

    AppText {
        id: heading

        height: row.heading === "" ? 0 : 30
        visible: row.heading !== ""
        leftPadding: 10
        topPadding: 8
        text: row.heading
        token: Theme.captionBold
        color: Theme.textTertiary
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        id: body

        y: heading.height
        width: parent.width
        height: 36
        radius: 7
        color: row.isCurrent && !row.isNothing ? Theme.accentSoft : Theme.transparent

        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            visible: row.icon !== ""
            name: row.icon
            color: row.isCurrent ? Theme.accentText : Theme.textSecondary
        }

        ColorMark {
            x: 13
            anchors.verticalCenter: parent.verticalCenter
            visible: row.colorKey !== ""
            color: row.colorKey === "" ? Theme.transparent : Theme.scheduleColor(row.colorKey)
        }

        FoundText {
            id: title

            x: row.isNothing ? 10 : 38
            width: Math.min(implicitWidth, detail.x - 12 - x)
            anchors.verticalCenter: parent.verticalCenter
            text: row.title
            start: row.titleStart
            length: row.titleLength
            color: row.isNothing ? Theme.textSecondary : Theme.text
        }

        AppText {
            id: dot

            anchors.left: title.right
            anchors.verticalCenter: parent.verticalCenter
            visible: row.part !== ""
            text: " · "
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        FoundText {
            anchors.left: dot.right
            width: Math.max(0, detail.x - 12 - dot.x - dot.width)
            anchors.verticalCenter: parent.verticalCenter
            visible: row.part !== ""
            text: row.part
            start: row.partStart
            length: row.partLength
            color: Theme.textSecondary
        }

        AppText {
            id: detail

            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: row.detail
            token: Theme.caption
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        HoverHandler {
            onPointChanged: {
                if (hovered)
                    row.pointed();
            }
        }

        TapHandler {
            // The palette closes then; before the click is over, it would reach what lies beneath.
            onTapped: Qt.callLater(row.chosen) // qmllint disable
        }
    }
}

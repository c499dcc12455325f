import QtQuick
import Tessaly.Ui

/// A generation in the list: its reason and moment, or its time alone. The first of a group has the group's heading
/// above it.
Item {
    id: row

    required property int index
    required property string title
    required property string moment
    property bool isRinged: false
    readonly property bool isChosen: ListView.isCurrentItem
    readonly property bool hasMoment: moment !== ""
    readonly property bool isFirstOfGroup: ListView.section !== ListView.previousSection

    signal chosen

    implicitHeight: body.y + body.height
    Accessible.role: Accessible.ListItem
    Accessible.name: hasMoment ? title + ", " + moment : title
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: chosen()

    AppText {
        id: heading

        height: row.isFirstOfGroup ? 30 : 0
        visible: row.isFirstOfGroup
        leftPadding: 8
        topPadding: 6
        text: row.ListView.section
        token: Theme.captionBold
        color: Theme.textTertiary
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        id: body

        y: heading.height
        width: parent.width
        height: row.hasMoment ? column.height + 10 : 30
        radius: Theme.smallRadius
        color: row.isChosen ? Theme.selected : hover.hovered ? Theme.hover : Theme.transparent

        Column {
            id: column

            x: 16
            width: parent.width - 32
            anchors.verticalCenter: parent.verticalCenter

            AppText {
                width: parent.width
                text: row.title
                token: row.isChosen && row.hasMoment ? Theme.buttonPrimary : Theme.control
                isMultiline: true
                maximumLineCount: 2
                Accessible.ignored: true

                ElidedTip {}
            }

            AppText {
                text: row.moment
                visible: row.hasMoment
                token: Theme.caption
                color: Theme.textSecondary
                Accessible.ignored: true
            }
        }

        FocusRing {
            visible: row.isRinged
            gap: -2
            targetRadius: Theme.smallRadius
        }

        HoverHandler {
            id: hover
        }

        TapHandler {
            onTapped: row.chosen()
        }
    }
}

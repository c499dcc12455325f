import QtQuick
import Tessaly.Ui

/// A generation in the list: its reason and moment, or its time alone.
Item {
    id: row

    required property int index
    required property string title
    required property string moment
    readonly property bool isChosen: ListView.isCurrentItem
    readonly property bool hasMoment: moment !== ""

    signal chosen

    implicitHeight: hasMoment ? column.height + 10 : 30
    Accessible.role: Accessible.ListItem
    Accessible.name: hasMoment ? title + ", " + moment : title
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: chosen()

    Rectangle {
        anchors.fill: parent
        radius: Theme.smallRadius
        color: row.isChosen ? Theme.selected : hover.hovered ? Theme.hover : Theme.transparent
    }

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

    HoverHandler {
        id: hover
    }

    TapHandler {
        onTapped: row.chosen()
    }
}

import QtQuick
import Tessaly.Ui

/// One screen in the sidebar's list.
Rectangle {
    id: row

    required property int section
    required property string label
    required property string iconName
    property bool isSelected: false
    property bool hasFocusRing: false

    signal chosen

    implicitHeight: Theme.controlHeight
    radius: Theme.smallRadius
    color: isSelected ? Theme.selected : press.pressed ? Theme.pressed : hover.hovered ? Theme.hover : Theme.transparent
    Accessible.role: Accessible.ListItem
    Accessible.name: label
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: chosen()

    Icon {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: row.iconName
        color: row.isSelected ? Theme.accentText : Theme.textSecondary
    }

    AppText {
        x: 36
        width: parent.width - x - 10
        anchors.verticalCenter: parent.verticalCenter
        text: row.label
        token: row.isSelected ? Theme.groupLabel : Theme.rowTitle
        Accessible.ignored: true
    }

    FocusRing {
        gap: -2
        targetRadius: row.radius
        visible: row.hasFocusRing
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        id: press

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: row.chosen()
    }
}

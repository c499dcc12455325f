import QtQuick

/// The ring around a control that has the keyboard focus: two pixels wide, `gap` pixels outside its parent.
Rectangle {
    property real gap: 2
    property real targetRadius: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -gap - 2
    radius: targetRadius + gap + 2
    color: Theme.transparent
    border.width: 2
    border.color: Theme.focus
}

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// The round box that ticks an item off. Its target is at least 28 × 28.
T.CheckBox {
    id: circle

    property int size: 18
    property bool isComplete: false
    /// Name for assistive technology: the item's title.
    property string itemTitle

    implicitWidth: 28
    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    // The item decides whether a click ticks it off.
    checked: isComplete
    nextCheckState: () => circle.checkState
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Accessible.name: itemTitle

    ClickFocus {
        control: circle
    }
    PressGuard {
        anchors.fill: parent
    }

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            size: circle.size
            stroke: circle.isComplete ? 2 : 1.75
            name: circle.isComplete ? "circle-check-fill" : "circle"
            color: circle.isComplete ? Theme.success : circle.hovered ? Theme.textSecondary : Theme.textTertiary
        }

        FocusRing {
            anchors.fill: undefined
            anchors.centerIn: parent
            width: circle.size + 8
            height: circle.size + 8
            targetRadius: circle.size / 2
            visible: circle.visualFocus
        }
    }
}

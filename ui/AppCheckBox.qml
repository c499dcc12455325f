import QtQuick
import QtQuick.Templates as T

/// A check box with an optional label; `isPartial` draws a dash while it still counts as off.
T.CheckBox {
    id: box

    property bool isPartial: false

    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: 28
    leftPadding: 16 + (text === "" ? 0 : 10)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    // On these actions Qt 6.4 changes the state without emitting toggled().
    Accessible.onPressAction: switchOver()
    Accessible.onToggleAction: switchOver()
    Accessible.name: text
    Accessible.checkStateMixed: isPartial

    function switchOver() {
        toggle();
        toggled();
    }

    indicator: Rectangle {
        readonly property bool isFilled: box.checked || box.isPartial

        y: (box.height - height) / 2
        width: 16
        height: 16
        radius: 4
        color: isFilled ? Theme.accent : Theme.field
        border.width: isFilled ? 0 : 1.5
        border.color: Theme.borderStrong

        Icon {
            anchors.centerIn: parent
            size: 12
            stroke: 3
            name: box.checked ? "check" : "minus"
            color: Theme.inkOnAccent
            visible: parent.isFilled
        }

        FocusRing {
            visible: box.visualFocus
            targetRadius: 4
        }
    }

    contentItem: AppText {
        text: box.text
        token: Theme.control
        Accessible.ignored: true
    }
}

import QtQuick
import QtQuick.Templates as T

/// An on/off switch with its label at the right; the label is part of the target.
T.Switch {
    id: toggle

    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: 34 + (text === "" ? 0 : 10)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    // On these actions Qt 6.4 changes the state without emitting toggled().
    Accessible.onPressAction: switchOver()
    Accessible.onToggleAction: switchOver()
    Accessible.name: text

    function switchOver() {
        toggle.toggle();
        toggle.toggled();
    }

    indicator: Rectangle {
        y: (toggle.height - height) / 2
        width: 34
        height: 20
        radius: 10
        color: toggle.checked ? Theme.accent : Theme.toggleOff

        Rectangle {
            x: toggle.checked ? 16 : 2
            y: 3
            width: 16
            height: 16
            radius: 8
            color: Theme.knobShadow
        }

        Rectangle {
            x: toggle.checked ? 16 : 2
            y: 2
            width: 16
            height: 16
            radius: 8
            color: Theme.knob

            Behavior on x {
                NumberAnimation {
                    duration: Theme.switching
                    easing.type: Easing.OutCubic
                }
            }
        }

        FocusRing {
            visible: toggle.visualFocus
            targetRadius: 10
        }
    }

    contentItem: AppText {
        text: toggle.text
        token: Theme.control
        Accessible.ignored: true
    }
}

import QtQuick
import QtQuick.Templates as T

/// A slider with a round knob. Arrow keys move by `stepSize`, Page keys by ten steps, Home and End to the ends. The
/// wheel scrolls the page.
T.Slider {
    id: slider

    /// Name for assistive technology.
    property string name

    implicitWidth: 90
    implicitHeight: 20
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    wheelEnabled: false
    Accessible.name: name
    Accessible.onIncreaseAction: {
        increase();
        moved();
    }
    Accessible.onDecreaseAction: {
        decrease();
        moved();
    }
    Keys.onPressed: event => {
        const jump = {
            [Qt.Key_PageUp]: slider.value + 10 * slider.stepSize,
            [Qt.Key_PageDown]: slider.value - 10 * slider.stepSize,
            [Qt.Key_Home]: slider.from,
            [Qt.Key_End]: slider.to
        }[event.key];
        if (jump === undefined)
            return;
        slider.value = Math.max(slider.from, Math.min(slider.to, jump));
        slider.moved();
        event.accepted = true;
    }

    background: Rectangle {
        y: (slider.height - height) / 2
        width: slider.width
        height: 4
        radius: 2
        color: Theme.track

        Rectangle {
            width: slider.handle.x + slider.handle.width / 2
            height: parent.height
            radius: 2
            color: slider.enabled ? Theme.accent : Theme.textDisabled
        }
    }

    handle: Rectangle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: 14
        height: 14
        radius: 7
        color: Theme.knob
        border.width: 1
        border.color: Theme.borderStrong

        FocusRing {
            visible: slider.visualFocus
            targetRadius: 7
        }
    }
}

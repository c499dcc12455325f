import QtQuick
import QtQuick.Templates as T

/// A slider with a round knob. Arrow keys move by `stepSize`, which is required, Page keys by ten steps, Home and End
/// to the ends. The wheel scrolls the page.
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
        const most = Math.ceil((to - from) / stepSize);
        const steps = {
            [Qt.Key_PageUp]: 10,
            [Qt.Key_PageDown]: -10,
            [Qt.Key_Home]: -most,
            [Qt.Key_End]: most
        }[event.key] ?? 0;
        event.accepted = steps !== 0;
        // An assignment to the value would end its binding.
        for (let step = 0; step < Math.abs(steps); ++step)
            steps > 0 ? increase() : decrease();
        if (steps !== 0)
            moved();
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

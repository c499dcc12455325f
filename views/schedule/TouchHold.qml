import QtQuick
import Tessaly.Ui

/// A finger that rests for a moment takes what is under it and then drags it; one that moves at once scrolls the page,
/// which a mouse never does here. It lies beneath what it serves, which keeps its taps.
Item {
    id: hold

    /// Does not scroll while something is held.
    required property ScrollPage scroll
    property bool isHeld: false

    /// Points in the scene.
    signal taken(at: point)
    signal moved(at: point)
    /// Whether the finger has moved what it held.
    signal released(isMoved: bool)

    function end(isMoved: bool) {
        if (!isHeld)
            return;
        isHeld = false;
        released(isMoved);
    }

    Timer {
        id: rest

        property point at: Qt.point(0, 0)

        interval: 600
        onTriggered: {
            hold.isHeld = true;
            hold.taken(at);
        }
    }

    Connections {
        function onMovementStarted() {
            rest.stop();
        }

        target: hold.scroll
    }

    // Other handlers do not hear of a finger on a button.
    DragHandler {
        id: drag

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        dragThreshold: hold.isHeld ? 2 : 32000
        onGrabChanged: (transition, point) => {
            if (transition === PointerDevice.GrabPassive) {
                rest.at = point.scenePosition;
                rest.restart();
            } else if (transition === PointerDevice.UngrabPassive || transition === PointerDevice.CancelGrabPassive) {
                rest.stop();
                hold.end(false);
            }
        }
        onActiveChanged: {
            if (!active)
                hold.end(true);
        }
        onCentroidChanged: {
            if (active && hold.isHeld)
                hold.moved(drag.centroid.scenePosition);
        }
    }

    // It only tells when a button of the mouse is down, on a button too: however quick the mouse is, the page does not
    // take its movement for its own.
    DragHandler {
        id: mouse

        property bool isDown: false

        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        dragThreshold: 32000
        onGrabChanged: transition => {
            if (transition === PointerDevice.GrabPassive)
                isDown = true;
            else if (transition === PointerDevice.UngrabPassive || transition === PointerDevice.CancelGrabPassive)
                isDown = false;
        }
    }

    Binding {
        target: hold.scroll
        property: "interactive"
        value: false
        when: hold.isHeld || mouse.isDown
    }
}

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The pointer takes a line of the month to another day. It lies beneath the days, which keep their clicks, and not beyond
/// them. Points are those of what the lines stand in.
Item {
    id: gestures

    required property MonthDragModel drag
    required property MonthGeometry geometry
    required property ScrollPage scroll
    /// What the lines stand in.
    required property Item lines
    /// Where the pointer is.
    property point at: Qt.point(0, 0)

    function follow(pointer: point) {
        at = lines.mapFromItem(null, pointer);
        drag.moveTo(geometry.placeAt(at.x, at.y));
    }

    function begin(pointer: point) {
        const pressed = lines.mapFromItem(null, pointer);
        const line = lines.childAt(pressed.x, pressed.y) as MonthLine;
        if (line !== null && !line.isMore && drag.begin(line.index))
            follow(pointer);
    }

    HoverHandler {
        enabled: gestures.drag.isActive
        cursorShape: Qt.ClosedHandCursor
    }

    DragHandler {
        id: handler

        target: null
        dragThreshold: 6
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        onActiveChanged: {
            if (active)
                gestures.begin(handler.centroid.scenePressPosition);
            else
                gestures.drag.drop();
        }
        onCentroidChanged: {
            if (active && gestures.drag.isActive)
                gestures.follow(handler.centroid.scenePosition);
        }
    }

    TouchHold {
        anchors.fill: parent
        scroll: gestures.scroll
        onTaken: at => gestures.begin(at)
        onMoved: at => gestures.follow(at)
        onReleased: isMoved => {
            if (isMoved)
                gestures.drag.drop();
            else
                gestures.drag.cancel();
        }
    }

    Shortcut {
        enabled: gestures.drag.isActive
        sequence: "Esc"
        onActivated: gestures.drag.cancel()
    }
}

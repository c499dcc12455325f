import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The pointer takes a bar of the row above the hours to other days, or one of its ends. It lies beneath the bars, which
/// keep their clicks. At the side of the week it turns it.
Item {
    id: gestures

    required property ScheduleViewModel viewModel
    required property ScrollPage scroll
    readonly property BarDragModel drag: viewModel.margins.drag
    /// Where a week is waiting: -1 at the left edge, 1 at the right.
    property int side: 0
    /// In the scene.
    property point pointer: Qt.point(0, 0)

    function follow() {
        const x = mapFromItem(null, pointer).x;
        drag.moveTo(x);
        side = x < 8 ? -1 : x > width - 8 ? 1 : 0;
    }

    function followTo(place: point) {
        pointer = place;
        follow();
    }

    function begin(pressed: point, at: point) {
        const place = mapFromItem(null, pressed);
        if (drag.begin(place.x, place.y))
            followTo(at);
    }

    HoverHandler {
        readonly property bool isOverEnd: hovered && gestures.drag.isEndAt(point.position.x, point.position.y)

        cursorShape: gestures.drag.isMove ? Qt.ClosedHandCursor : isOverEnd || gestures.drag.isActive ? Qt.SizeHorCursor : Qt.ArrowCursor
    }

    DragHandler {
        id: handler

        target: null
        dragThreshold: 6
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        onActiveChanged: {
            if (active)
                gestures.begin(handler.centroid.scenePressPosition, handler.centroid.scenePosition);
            else
                gestures.drag.drop();
        }
        onCentroidChanged: {
            if (active && gestures.drag.isActive)
                gestures.followTo(handler.centroid.scenePosition);
        }
    }

    TouchHold {
        anchors.fill: parent
        scroll: gestures.scroll
        onTaken: at => gestures.begin(at, at)
        onMoved: at => gestures.followTo(at)
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

    Timer {
        interval: 600
        repeat: true
        running: gestures.drag.isActive && gestures.side !== 0
        onTriggered: {
            if (gestures.side < 0)
                gestures.viewModel.showPrevious();
            else
                gestures.viewModel.showNext();
            gestures.follow();
        }
    }
}

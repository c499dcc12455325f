import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The pointer on the time area of the week: a tap on empty time chooses it; a drag moves or resizes a block, or selects
/// a span. It lies beneath the blocks, which keep their clicks. A finger does so once it has rested for a moment.
Item {
    id: gestures

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    /// Scrolls while something is dragged close to its upper or lower edge.
    required property ScrollPage scroll

    readonly property WeekDragModel drag: viewModel.drag
    /// Where a week is waiting: -1 at the left edge, 1 at the right.
    property int side: 0
    /// Pixels a second.
    property real driftSpeed: 0

    /// In the scene.
    property point pointer: Qt.point(0, 0)
    property bool isFine: false

    function followTo(place: point) {
        pointer = place;
        isFine = handler.centroid.modifiers & Qt.ShiftModifier;
        follow();
    }

    /// An item of the plan is dragged over the week, or beside it.
    function followItem(place: point, isFine: bool) {
        pointer = place;
        gestures.isFine = isFine;
        const here = mapFromItem(null, place);
        const isVisible = scroll.contains(scroll.mapFromItem(null, place));
        if (isVisible && here.x >= -geometry.hourColumn && here.x < width && here.y >= 0 && here.y < height) {
            follow();
        } else {
            drag.leave();
            rest();
        }
    }

    function rest() {
        side = 0;
        driftSpeed = 0;
    }

    function follow() {
        const place = mapFromItem(null, pointer);
        const inPage = scroll.mapFromItem(null, pointer).y;
        drag.moveTo(place.x, place.y, isFine);
        side = place.x < 8 ? -1 : place.x > width - 8 ? 1 : 0;
        const zone = Theme.driftZone / 2;
        driftSpeed = Theme.driftPerPixel * (inPage < zone ? inPage - zone : Math.max(0, inPage - (scroll.height - zone)));
    }

    function begin(pressed: point, at: point) {
        const place = mapFromItem(null, pressed);
        if (drag.begin(place.x, place.y))
            followTo(at);
    }

    HoverHandler {
        id: hover

        readonly property bool isOverEdge: hovered && gestures.drag.isEdgeAt(point.position.x, point.position.y)

        cursorShape: gestures.drag.isMove ? Qt.ClosedHandCursor : isOverEdge || gestures.drag.isActive && !gestures.drag.isSelection ? Qt.SizeVerCursor : Qt.ArrowCursor
    }

    TapHandler {
        onTapped: point => {
            const place = point.position;
            if (tapCount === 1 && gestures.drag.isEmptyAt(place.x, place.y))
                gestures.viewModel.tapTime(Math.floor(place.x / (gestures.geometry.dayWidth + 1)), place.y);
        }
    }

    DragHandler {
        id: handler

        target: null
        dragThreshold: 6
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        onActiveChanged: {
            if (active)
                gestures.begin(handler.centroid.scenePressPosition, handler.centroid.scenePosition);
        }
        onGrabChanged: transition => {
            if (transition === PointerDevice.UngrabExclusive)
                gestures.drag.drop();
        }
        // Something else has taken the pointer.
        onCanceled: gestures.drag.cancel()
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
        running: gestures.drag.isMove && gestures.side !== 0
        onTriggered: {
            if (gestures.side < 0)
                gestures.viewModel.showPrevious();
            else
                gestures.viewModel.showNext();
            gestures.follow();
        }
    }

    FrameAnimation {
        running: gestures.drag.isActive && gestures.driftSpeed !== 0
        onTriggered: {
            gestures.scroll.contentY = Scrolling.within(gestures.scroll, gestures.scroll.contentY + gestures.driftSpeed * frameTime);
            gestures.follow();
        }
    }
}

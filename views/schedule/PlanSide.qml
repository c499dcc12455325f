import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Where the plan stands beside the week: at the right edge, or over the page where that is narrow. It takes the plan's
/// items to the week. The panel itself is loaded while it is open.
Item {
    id: side

    required property ScheduleViewModel viewModel
    /// A WeekTimeline; null until the week was shown.
    required property Item timeline
    /// The button that opens the panel.
    required property Item opener
    /// Whether no sheet is open.
    required property bool isUncovered

    readonly property WeekDragModel drag: viewModel.drag
    readonly property bool isShown: PlannerStore.isPlanShown && viewModel.scope === ScheduleViewModel.Week
    readonly property bool isOver: width + Theme.sidebarWidth < 1180
    /// What the page leaves free for it.
    readonly property real room: isShown && !isOver ? loader.width : 0
    /// An item is being placed by keys.
    property bool isPlacing: false

    signal refused(string reason)

    function open() {
        viewModel.scope = ScheduleViewModel.Week;
        PlannerStore.isPlanShown = true;
        loader.item?.takeFocus(); // qmllint disable property
    }

    function close() {
        const hadFocus = (loader.item as Item)?.activeFocus ?? false;
        PlannerStore.isPlanShown = false;
        if (hadFocus)
            opener.forceActiveFocus(Qt.OtherFocusReason);
    }

    function place(event: KeyEvent) {
        const steps = new Map([[Qt.Key_Up, [0, -15]], [Qt.Key_Down, [0, 15]], [Qt.Key_Left, [-1, 0]], [Qt.Key_Right, [1, 0]]]);
        event.accepted = true;
        if (event.key === Qt.Key_Escape) {
            drag.cancel();
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            if (!event.isAutoRepeat)
                drag.drop();
        } else if (steps.has(event.key)) {
            const way = steps.get(event.key);
            show(drag.shiftItem(way[0], way[1]));
        }
    }

    /// Turns the week to the item that is placed, and tells where it is.
    function show(turn: int) {
        if (turn < 0)
            viewModel.showPrevious();
        else if (turn > 0)
            viewModel.showNext();
        const frame = drag.frame;
        const week = timeline as WeekTimeline;
        const top = week.gestures.mapToItem(week.scroll.contentItem, 0, frame.y).y;
        const view = week.scroll;
        const least = top + frame.height + 24 - view.height;
        view.contentY = Scrolling.within(view, Math.max(least, Math.min(view.contentY, top - 24)));
        viewModel.announced(drag.spokenTimes());
    }

    // The panel takes along what is dragged from it.
    onIsShownChanged: {
        if (!isShown && drag.itemId !== "")
            drag.cancel();
    }
    Keys.onPressed: event => {
        if (isPlacing)
            place(event);
    }
    onActiveFocusChanged: {
        if (!activeFocus && isPlacing)
            drag.cancel();
    }

    Shortcut {
        enabled: side.isUncovered
        sequence: Shortcuts.plan
        onActivated: {
            if (side.isShown)
                side.close();
            else
                side.open();
        }
    }

    Shortcut {
        enabled: side.isUncovered && !(loader.item as Item)?.activeFocus
        sequence: Shortcuts.choosePlan
        onActivated: side.open()
    }

    Shortcut {
        enabled: side.isUncovered && side.isShown && side.isOver && !side.drag.isActive
        sequence: "Esc"
        onActivated: side.close()
    }

    Connections {
        function onChanged() {
            if (!side.isPlacing || side.drag.isActive)
                return;
            side.isPlacing = false;
            if (side.activeFocus)
                loader.item?.takeFocus(); // qmllint disable property
        }

        target: side.drag
    }

    Loader {
        id: loader

        x: parent.width - width
        width: 260
        height: parent.height
        active: side.isShown
        source: "../Plan/PlanPanel.qml"
        // Steps aside for what it gives, so that the whole week can be reached.
        opacity: side.isOver && side.drag.itemId !== "" ? 0 : 1

        Behavior on opacity {
            NumberAnimation {
                duration: 90
            }
        }
    }

    Binding {
        target: loader.item
        property: "day"
        value: side.viewModel.focusedDate
    }
    Binding {
        target: loader.item
        property: "isOver"
        value: side.isOver
    }
    Binding {
        target: loader.item
        property: "heldItem"
        value: side.drag.itemId
    }
    Binding {
        target: loader.item
        property: "heldStart"
        value: side.drag.itemStart
    }

    Connections {
        function onCloseRequested() {
            side.close();
        }
        function onRefused(reason: string) {
            side.refused(reason);
        }
        function onDragStarted(itemId: string, title: string) {
            side.isPlacing = false;
            side.drag.beginItem(itemId, title);
        }
        function onDragged(itemId: string, place: point, isFine: bool) {
            // Not after Esc.
            if (side.drag.itemId === itemId && !side.isPlacing)
                (side.timeline as WeekTimeline).gestures.followItem(place, isFine);
        }
        function onDropped() {
            if (!side.isPlacing)
                side.drag.drop();
        }
        function onAbandoned() {
            side.drag.cancel();
        }
        function onTaken(itemId: string, title: string, start: real) {
            side.drag.placeItem(itemId, title, start);
            side.isPlacing = side.drag.isActive;
            if (!side.isPlacing)
                return;
            side.forceActiveFocus(Qt.OtherFocusReason);
            side.show(0);
        }

        target: loader.item
    }
}

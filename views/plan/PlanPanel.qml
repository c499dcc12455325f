pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Plan
import Tessaly.Store
import Tessaly.Ui

/// The plan beside the week: how full a day is, and the open to-dos and goal tasks, which are dragged or sent to the
/// week. What the week has to do for that, it is asked for.
FocusScope {
    id: panel

    /// The day that is planned, ISO 8601.
    property string day
    /// Whether it lies over the page.
    property bool isOver: false
    /// The item that is on its way to the week; empty for none.
    property string heldItem
    /// Where it would begin, in seconds as in Instant; NaN for nowhere.
    property real heldStart: NaN

    signal closeRequested
    signal refused(string reason)
    signal dragStarted(string itemId, string title)
    signal dragged(string itemId, point place, bool isFine)
    signal dropped
    /// What is dragged is to stay where it was.
    signal abandoned
    /// An item is to be placed with the arrow keys, from that start on.
    signal taken(string itemId, string title, real start)

    /// Puts the focus on the chosen row.
    function takeFocus() {
        if (list.currentIndex < 0)
            list.currentIndex = 0;
        const item = list.currentItem as PlanItem;
        if (item !== null)
            item.takeFocus();
        else
            closeButton.forceActiveFocus(Qt.TabFocusReason);
    }

    function step(by: int) {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + by));
        takeFocus();
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: heading.text

    PlanModel {
        id: plan

        store: PlannerStore
        day: panel.day
        addedStart: panel.heldStart
        onRefused: reason => panel.refused(reason)
    }

    PopupFrame {
        anchors.fill: parent
        anchors.topMargin: -1
        anchors.rightMargin: -1
        anchors.bottomMargin: -1
        visible: panel.isOver
        radius: 0
    }

    Rectangle {
        anchors.fill: parent
        visible: !panel.isOver
        color: Theme.bg

        Separator {
            width: 1
            height: parent.height
        }
    }

    // What is beneath takes no clicks.
    TapHandler {
        gesturePolicy: TapHandler.WithinBounds
    }
    HoverHandler {
        blocking: true
    }

    HeadingText {
        id: heading

        x: 16
        y: 40
        text: Language.text("计划", "Plan")
    }

    IconButton {
        id: closeButton

        anchors.right: parent.right
        anchors.rightMargin: 10
        y: 35
        iconName: "x"
        text: Language.text("关闭", "Close")
        onClicked: panel.closeRequested()
    }

    PlanLoad {
        id: load

        x: 16
        y: 77
        width: parent.width - 32
        plan: plan
    }

    Separator {
        id: line

        y: load.y + load.height
        width: parent.width
    }

    ListView {
        id: list

        anchors.fill: parent
        anchors.topMargin: line.y + 1
        anchors.leftMargin: 10
        anchors.rightMargin: 10
        topMargin: 6
        bottomMargin: 10
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: 0
        onCurrentIndexChanged: positionViewAtIndex(currentIndex, ListView.Contain)
        T.ScrollBar.vertical: AppScrollBar {}
        model: plan.rows
        Accessible.role: Accessible.List
        Accessible.name: heading.text

        delegate: PlanItem {
            id: row

            width: list.width
            isCurrent: ListView.isCurrentItem
            isHeld: itemId === panel.heldItem && panel.heldItem !== ""
            isRaised: panel.isOver
            onPlaced: plan.place(index)
            onTaken: panel.taken(itemId, title, plan.firstStart())
            onStepped: by => panel.step(by)
            onPointed: list.currentIndex = index
            onDragStarted: panel.dragStarted(itemId, title)
            onDragged: (place, isFine) => panel.dragged(itemId, place, isFine)
            onDropped: panel.dropped()
            onAbandoned: panel.abandoned()
        }
    }

    AppText {
        x: 16
        y: line.y + 17
        width: parent.width - 32
        visible: list.count === 0
        text: Language.text("没有未完成的事项。", "Nothing open.")
        token: Theme.control
        color: Theme.textSecondary
    }
}

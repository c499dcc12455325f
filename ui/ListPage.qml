import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Ui

/// A screen that is one long list: rows are created as they come into view. The children stand above the rows and
/// scroll with them. Rows are as wide as the page and put their content at `columnX`, `columnWidth` wide.
ListView {
    id: page

    readonly property real columnX: Theme.pagePadding
    readonly property real columnWidth: Math.min(width - 2 * Theme.pagePadding, Theme.contentLimit)
    property int focusMargin: 16
    default property alias head: headHolder.data

    readonly property real leastContentY: originY - topMargin
    /// Pixels a second by which the page scrolls by itself, see driftNear(); negative upwards.
    property real driftSpeed: 0
    /// Height of the head when the view was last put right.
    property real settledTop: 0

    /// Scrolls as little as needed to show the item with room to spare.
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y - focusMargin;
        const bottom = top + item.height + 2 * focusMargin;
        if (item.height > height)
            return;
        if (top < contentY)
            contentY = Math.max(leastContentY, top);
        else if (bottom > contentY + height)
            contentY = Math.min(Math.max(leastContentY, originY + contentHeight + bottomMargin - height), bottom - height);
    }

    /// Scrolls on by itself while something is held at height `y` of the rows, near an edge of the view; no further
    /// than from `top` to `bottom`.
    function driftNear(y: real, top: real, bottom: real) {
        const above = contentY + Theme.driftZone - y;
        const below = y - (contentY + height - Theme.driftZone);
        drift.least = Math.max(leastContentY, Math.min(contentY, top - focusMargin));
        drift.most = Math.max(contentY, bottom + focusMargin - height);
        driftSpeed = above > 0 ? -Theme.driftPerPixel * above : below > 0 ? Theme.driftPerPixel * below : 0;
    }

    function isInside(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === contentItem)
                return true;
        }
        return false;
    }

    /// Rows are made in the order in which they come into view, but Tab goes down the page.
    function putInOrder() {
        TabOrder.goDown(contentItem, originY);
    }

    objectName: "page"
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    keyNavigationEnabled: false
    currentIndex: -1
    cacheBuffer: 600
    topMargin: headHolder.height
    bottomMargin: Theme.pagePadding
    // What grows in the head pushes the rows down and stays where it is.
    onTopMarginChanged: {
        contentY += settledTop - topMargin;
        settledTop = topMargin;
    }
    onCountChanged: ordering.restart()
    onContentHeightChanged: ordering.restart()
    Component.onCompleted: contentY = leastContentY
    T.ScrollBar.vertical: AppScrollBar {}

    // Once the rows that changed are there.
    Timer {
        id: ordering

        interval: 0
        onTriggered: page.putInOrder()
    }

    // What a group opens fades in while the rows beneath slide out of its way.
    add: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.disclose
            easing.type: Easing.OutCubic
        }
    }
    displaced: Transition {
        NumberAnimation {
            property: "y"
            duration: Theme.disclose
            easing.type: Easing.OutCubic
        }
        // A row that moves on before it has appeared must not stay pale.
        NumberAnimation {
            property: "opacity"
            to: 1
            duration: Theme.disclose
            easing.type: Easing.OutCubic
        }
    }

    FrameAnimation {
        id: drift

        property real least: 0
        property real most: 0

        running: page.driftSpeed !== 0
        onTriggered: page.contentY = Math.max(least, Math.min(most, page.contentY + page.driftSpeed * frameTime))
    }

    Item {
        id: headHolder

        parent: page.contentItem
        y: page.originY - height
        width: page.width
        height: childrenRect.height
    }

    Connections {
        function onActiveFocusItemChanged() {
            const item = page.Window.activeFocusItem as Item;
            if (item && item !== page.contentItem && page.isInside(item)) {
                page.reveal(item);
                page.forceLayout();
                page.putInOrder();
            }
        }

        target: page.Window.window
    }

    TypingWatch {
        parent: page
        onTyped: {
            const item = page.Window.activeFocusItem as Item;
            if (item && page.isInside(item))
                page.reveal(item);
        }
    }
}

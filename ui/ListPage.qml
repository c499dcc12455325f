import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A screen that is one long list: rows are created as they come into view. The children stand above the rows and
/// scroll with them. Rows are as wide as the page and put their content at `columnX`, `columnWidth` wide.
ListView {
    id: page

    readonly property real columnX: Theme.pagePadding
    readonly property real columnWidth: Math.min(width - 2 * Theme.pagePadding, Theme.contentLimit)
    default property alias head: headHolder.data

    /// Room beneath the rows, and beneath what stands there, for what covers the foot of the page.
    property real footRoom: 0
    property real belowRows: 0
    readonly property real leastContentY: originY - topMargin
    /// Speed of automatic scrolling in pixels per second, see driftNear(); negative means up.
    property real driftSpeed: 0
    /// Height of the head when the position was last adjusted.
    property real settledTop: 0

    /// Scrolls as little as needed to show the item with room to spare.
    function reveal(item: Item) {
        contentY = Scrolling.placeFor(page, item, footRoom);
    }

    /// Scrolls automatically while something is dragged at height `y` of the rows, close to an edge of the view; not
    /// beyond `top` and `bottom`.
    function driftNear(y: real, top: real, bottom: real) {
        const above = contentY + Theme.driftZone - y;
        const below = y - (contentY + height - Theme.driftZone);
        drift.least = Math.max(leastContentY, Math.min(contentY, top - Scrolling.margin));
        drift.most = Math.max(contentY, bottom + Scrolling.margin - height);
        driftSpeed = above > 0 ? -Theme.driftPerPixel * above : below > 0 ? Theme.driftPerPixel * below : 0;
    }

    /// A page that does not scroll has made room for its head by itself as well.
    function stayOnPage() {
        contentY = Math.max(contentY, leastContentY);
    }

    /// Rows are created in the order in which they come into view, but Tab must go down the page.
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
    bottomMargin: belowRows + Theme.pagePadding + footRoom
    onBottomMarginChanged: returnToBounds()
    // What grows in the head pushes the rows down and stays where it is.
    onTopMarginChanged: {
        // At its top, the page has followed by itself. The property may still be that of before.
        if (contentY > originY - topMargin)
            contentY += settledTop - topMargin;
        settledTop = topMargin;
        Qt.callLater(stayOnPage); // qmllint disable
    }
    // Once the rows that changed are there.
    onCountChanged: Qt.callLater(putInOrder) // qmllint disable
    onContentHeightChanged: Qt.callLater(putInOrder) // qmllint disable
    Component.onCompleted: contentY = leastContentY
    T.ScrollBar.vertical: AppScrollBar {}

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

    FocusWatch {
        parent: page
        area: page.contentItem
        onFollowed: item => {
            page.reveal(item);
            page.forceLayout();
            page.putInOrder();
        }
    }
}

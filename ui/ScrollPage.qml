import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A vertical scroll area that keeps the focused item in view, with room to spare.
Flickable {
    id: page

    /// Room beneath the content for what covers the foot of the page.
    property real footRoom: 0
    /// Stays in view while items around it change their sizes, until the focus leaves it or the user scrolls.
    property Item kept: null

    function reveal(item: Item) {
        if (!glide.running)
            contentY = Scrolling.placeFor(page, item, footRoom);
    }

    /// Scrolls smoothly to the item after a click. It waits for the double-click interval, so that a second click still
    /// hits what is under the pointer. Until then the focus does not scroll the page.
    function glideTo(item: Item) {
        glide.item = item;
        glide.restart();
    }

    function keepInView(item: Item) {
        kept = item;
        reveal(item);
    }

    function showKept() {
        if (kept)
            reveal(kept);
    }

    /// Shows the item with the focus, if it is in the page.
    function followFocus() {
        focusWatch.follow();
    }

    function isInside(item: Item, outer: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === outer)
                return true;
        }
        return false;
    }

    contentWidth: width
    bottomMargin: footRoom
    onBottomMarginChanged: returnToBounds()
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onMovementStarted: kept = null
    // When the layout is complete.
    onContentHeightChanged: Qt.callLater(showKept) // qmllint disable
    T.ScrollBar.vertical: AppScrollBar {}

    SequentialAnimation {
        id: glide

        property Item item
        property real progress: 0

        onProgressChanged: page.contentY += (Scrolling.placeFor(page, item, page.footRoom) - page.contentY) * progress

        PauseAnimation {
            duration: Qt.styleHints.mouseDoubleClickInterval // qmllint disable
        }

        // Towards the current position of the item: items above it may still be growing.
        NumberAnimation {
            target: glide
            property: "progress"
            from: 0
            to: 1
            duration: Theme.glide
        }
    }

    Connections {
        function onActiveFocusItemChanged() {
            if (!page.isInside(page.Window.activeFocusItem as Item, page.kept))
                page.kept = null;
        }

        target: page.Window.window
    }

    FocusWatch {
        id: focusWatch

        area: page.contentItem
        onFollowed: item => page.reveal(item)
    }
}

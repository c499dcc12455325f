import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A vertical scroll area that keeps the item with the focus in view, with room to spare.
Flickable {
    id: page

    property int focusMargin: 16
    /// Stays in view while what stands around it changes its size, until the focus leaves it or somebody scrolls.
    property Item kept: null

    /// The nearest scroll position at which the item is in view.
    function placeFor(item: Item): real {
        const top = item.mapToItem(contentItem, 0, 0).y;
        const bottom = top + item.height;
        if (item.height > height)
            return contentY;
        if (top - focusMargin < contentY)
            return Math.max(0, top - focusMargin);
        if (bottom + focusMargin > contentY + height)
            return Math.min(Math.max(0, contentHeight - height), bottom + focusMargin - height);
        return contentY;
    }

    function reveal(item: Item) {
        if (!glide.running)
            contentY = placeFor(item);
    }

    /// Brings the item into view gently after a click, and not before a second one can no longer be meant for what was
    /// under the pointer. Until then the focus does not scroll.
    function glideTo(item: Item) {
        glide.item = item;
        glide.restart();
    }

    function keepInView(item: Item) {
        kept = item;
        reveal(item);
    }

    function followFocus() {
        const item = Window.activeFocusItem as Item;
        if (item && item !== contentItem && isInside(item, contentItem))
            reveal(item);
    }

    function isInside(item: Item, outer: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === outer)
                return true;
        }
        return false;
    }

    objectName: "page"
    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onMovementStarted: kept = null
    onContentHeightChanged: settling.restart()
    T.ScrollBar.vertical: AppScrollBar {}

    // Once everything has its place.
    Timer {
        id: settling

        interval: 0
        onTriggered: {
            if (page.kept)
                page.reveal(page.kept);
        }
    }

    SequentialAnimation {
        id: glide

        property Item item
        property real progress: 0

        onProgressChanged: page.contentY += (page.placeFor(item) - page.contentY) * progress

        PauseAnimation {
            duration: Qt.styleHints.mouseDoubleClickInterval // qmllint disable
        }

        // Towards where the item is now: what stands above it may still be growing.
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
            page.followFocus();
        }

        target: page.Window.window
    }

    TypingWatch {
        onTyped: page.followFocus()
    }
}

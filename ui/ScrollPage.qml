import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A vertical scroll area that keeps the item with the focus in view, with room to spare.
Flickable {
    id: page

    property int focusMargin: 16

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

    function followFocus() {
        const item = Window.activeFocusItem as Item;
        if (item && item !== contentItem && isInside(item))
            reveal(item);
    }

    function isInside(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === contentItem)
                return true;
        }
        return false;
    }

    objectName: "page"
    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: AppScrollBar {}

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
            page.followFocus();
        }

        target: page.Window.window
    }

    TypingWatch {
        onTyped: page.followFocus()
    }
}

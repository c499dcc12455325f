import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A vertical scroll area that keeps the item with the focus in view, with room to spare.
Flickable {
    id: page

    property int focusMargin: 16

    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y;
        const bottom = top + item.height;
        if (item.height > height)
            return;
        if (top - focusMargin < contentY)
            contentY = Math.max(0, top - focusMargin);
        else if (bottom + focusMargin > contentY + height)
            contentY = Math.min(Math.max(0, contentHeight - height), bottom + focusMargin - height);
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

    Connections {
        function onActiveFocusItemChanged() {
            const item = page.Window.activeFocusItem as Item;
            if (item && item !== page.contentItem && page.isInside(item))
                page.reveal(item);
        }

        target: page.Window.window
    }
}

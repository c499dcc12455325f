pragma Singleton

import QtQuick

/// Where pages scroll to: to show an item, and by the keys that nothing else uses.
QtObject {
    /// Room to spare around an item that is brought into view.
    readonly property int margin: 16
    /// Height that stays in view when Page Up or Page Down is pressed.
    readonly property int overlap: 48

    /// The nearest scroll position at which the item is in view, above the part of the page's foot that is covered.
    function placeFor(page: Flickable, item: Item, covered: real): real {
        const top = item.mapToItem(page.contentItem, 0, 0).y - margin;
        const bottom = top + item.height + 2 * margin;
        const height = page.height - covered;
        if (item.height > height)
            return page.contentY;
        if (top < page.contentY || bottom - top > height)
            return within(page, top);
        if (bottom > page.contentY + height)
            return within(page, bottom - height);
        return page.contentY;
    }

    function press(page: Flickable, event: KeyEvent) {
        const step = Math.max(page.height - overlap, overlap);
        event.accepted = (event.modifiers & ~Qt.KeypadModifier) === 0;
        if (!event.accepted)
            return;
        if (event.key === Qt.Key_PageUp)
            page.contentY = within(page, page.contentY - step);
        else if (event.key === Qt.Key_PageDown)
            page.contentY = within(page, page.contentY + step);
        else if (event.key === Qt.Key_Home)
            page.contentY = within(page, -Infinity);
        else if (event.key === Qt.Key_End)
            goToEnd(page);
        else
            event.accepted = false;
    }

    function goToEnd(page: Flickable) {
        // The rows of a list are measured only as they come into view.
        for (let step = 0; step < 8 && !page.atYEnd; ++step)
            page.contentY = within(page, Infinity);
    }

    /// The scroll position nearest to `y` that the page has.
    function within(page: Flickable, y: real): real {
        const least = page.originY - page.topMargin;
        const most = page.originY + page.contentHeight + page.bottomMargin - page.height;
        return Math.max(least, Math.min(y, most));
    }
}

pragma Singleton

import QtQuick

/// The keys that scroll a page where nothing else has a use for them.
QtObject {
    /// What stays in view from one page to the next.
    readonly property int overlap: 48

    function scroll(page: Flickable, event: KeyEvent) {
        const step = Math.max(page.height - overlap, overlap);
        event.accepted = (event.modifiers & ~Qt.KeypadModifier) === 0;
        if (!event.accepted)
            return;
        if (event.key === Qt.Key_PageUp)
            move(page, -step);
        else if (event.key === Qt.Key_PageDown)
            move(page, step);
        else if (event.key === Qt.Key_Home)
            move(page, -Infinity);
        else if (event.key === Qt.Key_End)
            goToEnd(page);
        else
            event.accepted = false;
    }

    function goToEnd(page: Flickable) {
        // The rows of a list are measured only as they come into view.
        for (let step = 0; step < 8 && !page.atYEnd; ++step)
            move(page, Infinity);
    }

    function move(page: Flickable, distance: real) {
        const least = page.originY - page.topMargin;
        const most = page.originY + page.contentHeight + page.bottomMargin - page.height;
        page.contentY = Math.max(least, Math.min(page.contentY + distance, most));
    }
}

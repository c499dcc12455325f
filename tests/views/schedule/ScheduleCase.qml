import QtQuick
import Tessaly.Schedule
import Tessaly.Test

/// The schedule screen, made anew for each test function over an empty planner.
ScreenCase {
    id: test

    /// What the screen fills.
    required property Item page
    property Item screen: null

    function init() {
        page.width = 948;
        page.height = 1300;
        TestPlanner.reset();
        open();
    }

    function open() {
        screen?.destroy();
        screen = createTemporaryObject(screenComponent, page);
        waitForRendering(screen);
    }

    function center(item: Item): point {
        return item.mapToItem(page, item.width / 2, item.height / 2);
    }

    /// Presses there and moves on; drop() releases.
    function drag(from: point, to: point) {
        mousePress(page, from.x, from.y, Qt.LeftButton);
        moveTo(from, to);
    }

    function moveTo(from: point, to: point) {
        for (let step = 1; step <= 8; ++step)
            mouseMove(page, from.x + (to.x - from.x) * step / 8, from.y + (to.y - from.y) * step / 8, -1, Qt.LeftButton);
    }

    function drop(to: point) {
        mouseRelease(page, to.x, to.y, Qt.LeftButton);
    }

    Component {
        id: screenComponent

        ScheduleView {
            width: test.page.width
            height: test.page.height
        }
    }
}

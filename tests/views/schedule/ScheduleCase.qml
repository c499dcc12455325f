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

    Component {
        id: screenComponent

        ScheduleView {
            width: test.page.width
            height: test.page.height
        }
    }
}

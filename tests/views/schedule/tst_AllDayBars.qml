import QtQuick
import QtQuick.Window
import QtTest
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Test

Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        id: test

        page: root
        name: "AllDayBars"

        readonly property string tuesday: "Tuesday, September 8, 2026"
        readonly property string former: "2026-09-08 00:00 – 2026-09-11 00:00"

        function addFair() {
            TestPlanner.addScheduleBetween("Fair", "2026-09-08 00:00", "2026-09-11 00:00");
            PlannerStore.displayChoices.hasAllDayRow = true;
            waitForRendering(screen);
        }

        /// The middle of the day's column, at the height of the bar.
        function over(day: string, bar: Item): point {
            return Qt.point(center(header(day)).x, center(bar).y);
        }

        function header(day: string): Item {
            return matching(screen, item => item instanceof DayHeader && item.Accessible.name.startsWith(day));
        }

        function test_a_bar_is_taken_by_the_hand_data() {
            return [
                {tag: "moved", at: 0.1, to: "Thursday, September 10, 2026", expected: "2026-09-10 00:00 – 2026-09-13 00:00", said: "Moved to Sep 10 – Sep 12"},
                {tag: "by its end", at: 1, to: "Saturday, September 12, 2026", expected: "2026-09-08 00:00 – 2026-09-13 00:00", said: "Ends on Sep 12"},
                {tag: "by its start", at: 0, to: "Wednesday, September 9, 2026", expected: "2026-09-09 00:00 – 2026-09-11 00:00", said: "Starts on Sep 9"},
                {tag: "over its other end", at: 1, to: "Sunday, September 6, 2026", expected: "2026-09-08 00:00 – 2026-09-09 00:00", said: "Ends on Sep 8"}
            ];
        }

        function test_a_bar_is_taken_by_the_hand(data) {
            addFair();
            const bar = shown("Sep 8 – Sep 10, Fair");
            const from = bar.mapToItem(root, Math.max(2, Math.min(bar.width - 2, bar.width * data.at)), 10);
            const to = over(data.to, bar);
            drag(from, to);
            compare(TestPlanner.timesOf("Fair"), former, "nothing changes before the release");
            fuzzyCompare(bar.opacity, 0.4, 0.001);
            drop(to);
            compare(TestPlanner.timesOf("Fair"), data.expected);
            verify(shown(data.said) !== null);
            verify(named("Close") === null, "a drag is no click");
            PlannerStore.undo();
            compare(TestPlanner.timesOf("Fair"), former);
            tryCompare(shown("Sep 8 – Sep 10, Fair"), "opacity", 1);
        }

        function test_escape_puts_it_back_and_little_is_a_click() {
            addFair();
            const bar = shown("Sep 8 – Sep 10, Fair");
            const from = center(bar);
            const to = over("Friday, September 11, 2026", bar);
            drag(from, to);
            keyClick(Qt.Key_Escape);
            compare(bar.opacity, 1);
            drop(to);
            compare(TestPlanner.timesOf("Fair"), former);
            verify(named("Close") === null);
            mousePress(root, from.x, from.y);
            mouseMove(root, from.x + 5, from.y, -1, Qt.LeftButton);
            mouseRelease(root, from.x + 5, from.y);
            verify(shown("Close") !== null);
            compare(TestPlanner.timesOf("Fair"), former);
        }

        function test_keys_change_the_end() {
            addFair();
            shown("Sep 8 – Sep 10, Fair").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right, Qt.ShiftModifier);
            compare(TestPlanner.timesOf("Fair"), "2026-09-08 00:00 – 2026-09-12 00:00");
            verify(shown("Ends on Sep 11") !== null);
            for (let day = 0; day < 5; ++day)
                keyClick(Qt.Key_Left, Qt.ShiftModifier);
            compare(TestPlanner.timesOf("Fair"), "2026-09-08 00:00 – 2026-09-09 00:00");
            keyClick(Qt.Key_Left, Qt.ControlModifier);
            verify(shown("Moved to Sep 7") !== null);
            for (let day = 0; day < 3; ++day)
                keyClick(Qt.Key_Left, Qt.ControlModifier);
            compare(TestPlanner.timesOf("Fair"), "2026-09-04 00:00 – 2026-09-05 00:00");
            verify(shown("Sep 4, Fair").activeFocus, "the week and the focus go with the bar");
        }

        function test_a_bar_that_stays_says_why_data() {
            return [{tag: "of a link", read: false, said: "Schedules of a linked calendar cannot be moved."}, {tag: "of a read-only calendar", read: true, said: "The calendar “Holidays” is read-only."}];
        }

        function test_a_bar_that_stays_says_why(data) {
            TestPlanner.addFixedSchedule("Fair", data.read, "2026-09-08 00:00", "2026-09-11 00:00");
            PlannerStore.displayChoices.hasAllDayRow = true;
            waitForRendering(screen);
            const bar = shown("Sep 8 – Sep 10, Fair");
            const to = over("Friday, September 11, 2026", bar);
            drag(center(bar), to);
            verify(shown(data.said) !== null);
            drop(to);
            compare(TestPlanner.timesOf("Fair"), former);
        }

        function test_waiting_at_the_side_turns_the_week() {
            addFair();
            const bar = shown("Sep 8 – Sep 10, Fair");
            const from = bar.mapToItem(root, 20, 10);
            const side = Qt.point(header("Saturday, September 12, 2026").mapToItem(root, header("Saturday").width, 0).x, from.y);
            drag(from, side);
            tryVerify(() => named("Sunday, September 13, 2026") !== null);
            const to = Qt.point(center(header("Monday, September 14, 2026")).x, from.y);
            mouseMove(root, to.x, to.y, -1, Qt.LeftButton);
            drop(to);
            compare(TestPlanner.timesOf("Fair"), "2026-09-14 00:00 – 2026-09-17 00:00");
            verify(shown("Sep 14 – Sep 16, Fair") !== null);
        }

        function test_a_finger_that_rests_takes_a_bar() {
            addFair();
            const bar = shown("Sep 8 – Sep 10, Fair");
            const from = bar.mapToItem(root, 20, 10);
            const to = over("Wednesday, September 9, 2026", bar);
            const finger = touchEvent(root);
            finger.press(1, root, from.x, from.y).commit();
            tryVerify(() => bar.opacity < 0.5, 3000, "the finger has rested");
            for (let step = 1; step <= 8; ++step)
                finger.move(1, root, from.x + (to.x - from.x) * step / 8, from.y).commit();
            finger.release(1, root, to.x, to.y).commit();
            compare(TestPlanner.timesOf("Fair"), "2026-09-09 00:00 – 2026-09-12 00:00");
        }
    }
}

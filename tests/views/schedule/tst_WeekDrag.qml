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
        name: "WeekDrag"

        readonly property string wednesday: "Wednesday, September 9, 2026"
        readonly property string friday: "Friday, September 11, 2026"

        /// The point of a time, in minutes of the day, in the middle of the day's column.
        function at(day: string, minute: int): point {
            const header = matching(screen, item => item instanceof DayHeader && item.Accessible.name.startsWith(day));
            return header.mapToItem(root, header.width / 2, header.height + 2 + (minute / 60 - PlannerStore.displayStartHour) * hourHeight());
        }

        function hourHeight(): real {
            return Math.max(20, Math.min(42, 520 / (PlannerStore.displayEndHour - PlannerStore.displayStartHour)));
        }

        function shows(item: Item, text: string): bool {
            if (!item.visible)
                return false;
            if (item.text === text)
                return true;
            for (let i = 0; i < item.children.length; ++i) {
                if (shows(item.children[i], text))
                    return true;
            }
            return false;
        }

        function cleanup() {
            root.height = 1300;
        }

        function test_a_block_is_taken_by_the_hand_data() {
            return [
                {tag: "moved", from: 600, to: 660, expected: "2026-09-09 10:00 – 2026-09-09 12:00"},
                {tag: "to another day", from: 600, to: 617, day: friday, expected: "2026-09-11 09:15 – 2026-09-11 11:15"},
                {tag: "by its lower edge", from: 656, to: 720, expected: "2026-09-09 09:00 – 2026-09-09 12:00"},
                {tag: "by its upper edge", from: 544, to: 600, expected: "2026-09-09 10:00 – 2026-09-09 11:00"},
                {tag: "over its other edge", from: 656, to: 500, expected: "2026-09-09 09:00 – 2026-09-09 09:15"}
            ];
        }

        function test_a_block_is_taken_by_the_hand(data) {
            TestPlanner.addSchedule("A", 9, "9:00", "11:00", "");
            const from = at(wednesday, data.from);
            const to = at(data.day ?? wednesday, data.to);
            drag(from, to);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 11:00", "nothing changes before the release");
            fuzzyCompare(shown(wednesday + ", A").opacity, 0.4, 0.001);
            drop(to);
            compare(TestPlanner.timesOf("A"), data.expected);
            verify(named("Close") === null, "a drag is no click");
            tryCompare(shown((data.day ?? wednesday) + ", A"), "opacity", 1);
            PlannerStore.undo();
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 11:00");
        }

        function test_shift_makes_the_steps_finer() {
            TestPlanner.addSchedule("A", 9, "9:00", "11:00", "");
            const to = at(wednesday, 625);
            drag(at(wednesday, 600), to);
            verify(shows(screen, "09:30 – 11:30"));
            TestPlanner.dragWithShift(root, to);
            verify(shows(screen, "09:25 – 11:25"));
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:25 – 2026-09-09 11:25");
        }

        function test_escape_puts_it_back_and_little_is_a_click() {
            TestPlanner.addSchedule("A", 9, "9:00", "11:00", "");
            const from = at(wednesday, 600);
            const to = at(friday, 700);
            drag(from, to);
            keyClick(Qt.Key_Escape);
            compare(shown(wednesday + ", A").opacity, 1);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 11:00");
            verify(named("Close") === null);

            mousePress(root, from.x, from.y);
            mouseMove(root, from.x, from.y + 5, -1, Qt.LeftButton);
            mouseRelease(root, from.x, from.y + 5);
            verify(shown("Close") !== null);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 11:00");
        }

        Component {
            id: thief

            Item {
                anchors.fill: parent

                DragHandler {
                    target: null
                    dragThreshold: 60
                    grabPermissions: PointerHandler.CanTakeOverFromAnything
                }
            }
        }

        function test_it_is_put_back_when_something_else_takes_the_pointer() {
            TestPlanner.addSchedule("A", 9, "9:00", "11:00", "");
            const from = at(wednesday, 600);
            const to = at(friday, 700);
            const cover = createTemporaryObject(thief, root);
            drag(from, to);
            drop(to);
            cover.visible = false;
            compare(shown(wednesday + ", A").opacity, 1);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 11:00");
            drag(from, to);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-11 10:45 – 2026-09-11 12:45");
        }

        function test_a_schedule_of_a_link_says_why_it_stays() {
            TestPlanner.addFixedSchedule("L", false, "2026-09-09 09:00", "2026-09-09 10:00");
            const to = at(wednesday, 700);
            drag(at(wednesday, 570), to);
            verify(shown("Schedules of a linked calendar cannot be moved.") !== null);
            drop(to);
            compare(TestPlanner.timesOf("L"), "2026-09-09 09:00 – 2026-09-09 10:00");
        }

        function test_a_span_of_empty_time_is_for_the_form() {
            const to = at(friday, 892);
            drag(at(friday, 817), to);
            verify(shows(screen, "13:30 – 15:00") && shows(screen, "1 h 30 min"));
            drop(to);
            verify(shown("New schedule, 13:30 – 15:00").activeFocus);
            for (const character of "Span")
                keyClick(character);
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("Span"), "2026-09-11 13:30 – 2026-09-11 15:00");
        }

        function test_keys_move_the_focused_block() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            shown(wednesday + ", A").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down, Qt.ControlModifier);
            verify(shown("Moved to Sep 9, 09:15 to 10:15") !== null);
            keyClick(Qt.Key_Right, Qt.ControlModifier);
            keyClick(Qt.Key_Down, Qt.ShiftModifier);
            verify(shown("Ends at 10:30") !== null);
            compare(TestPlanner.timesOf("A"), "2026-09-10 09:15 – 2026-09-10 10:30");
            for (let day = 0; day < 3; ++day)
                keyClick(Qt.Key_Right, Qt.ControlModifier);
            const far = shown("Sunday, September 13, 2026, A");
            verify(far.activeFocus);
            PlannerStore.undo();
            compare(TestPlanner.timesOf("A"), "2026-09-12 09:15 – 2026-09-12 10:30");
            keyClick(Qt.Key_Left, Qt.AltModifier);
            const again = shown("Saturday, September 12, 2026, A");
            again.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Delete);
            compare(TestPlanner.scheduleCount(), 0);
            tryVerify(() => root.Window.activeFocusItem?.Accessible.name.startsWith("Sunday, September 6"));
        }

        function test_the_page_follows_to_what_is_out_of_view() {
            root.height = 420;
            waitForRendering(screen);
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            const scroll = findChild(screen, "page");
            const from = at(wednesday, 570);
            const foot = Qt.point(from.x, 412);
            drag(from, foot);
            tryVerify(() => scroll.contentY > 150);
            drop(foot);
            verify(TestPlanner.timesOf("A") > "2026-09-09 13");
        }

        function test_a_finger_that_rests_takes_a_block_and_one_that_moves_scrolls() {
            root.height = 420;
            waitForRendering(screen);
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            const from = at(wednesday, 570);
            const scroll = findChild(screen, "page");
            const finger = touchEvent(root);
            const moveFinger = (dx, dy) => {
                for (let step = 1; step <= 10; ++step)
                    finger.move(1, root, from.x + dx * step / 10, from.y + dy * step / 10).commit();
            };
            finger.press(1, root, from.x, from.y).commit();
            moveFinger(0, -120);
            finger.release(1, root, from.x, from.y - 120).commit();
            tryVerify(() => scroll.contentY > 60);
            tryVerify(() => !scroll.moving);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 10:00");
            verify(named("Close") === null);

            scroll.contentY = 0;
            waitForRendering(screen);
            finger.press(1, root, from.x, from.y).commit();
            tryVerify(() => shown(wednesday + ", A").opacity < 0.5, 3000, "the finger has rested");
            moveFinger(0, 84);
            finger.release(1, root, from.x, from.y + 84).commit();
            compare(TestPlanner.timesOf("A"), "2026-09-09 11:00 – 2026-09-09 12:00");
            compare(scroll.contentY, 0);
            verify(named("Close") === null, "a drag is no tap");
            verify(scroll.interactive);
        }

        function test_a_quick_hand_does_not_scroll_the_page_data() {
            return [{tag: "up", way: -1}, {tag: "down", way: 1}, {tag: "up in the month", way: -1, isMonth: true}, {tag: "down in the month", way: 1, isMonth: true}];
        }

        function test_a_quick_hand_does_not_scroll_the_page(data) {
            root.height = 420;
            TestPlanner.addSchedule("A", 9, "12:00", "13:00", "");
            if (data.isMonth)
                press("Month");
            waitForRendering(screen);
            const scroll = findChild(screen, "page");
            scroll.contentY = 120;
            waitForRendering(screen);
            const item = data.isMonth ? matching(screen, item => item instanceof MonthLine && item.title === "A") : shown(wednesday + ", A");
            const from = center(item);
            mousePress(root, from.x, from.y, Qt.LeftButton);
            for (const dy of [40, 50, 60, 70])
                mouseMove(root, from.x, from.y + data.way * dy, -1, Qt.LeftButton);
            compare(scroll.contentY, 120);
            mouseRelease(root, from.x, from.y + data.way * 70, Qt.LeftButton);
            const expected = data.isMonth ? (data.way < 0 ? "2026-09-02 12:00" : "2026-09-16 12:00") : (data.way < 0 ? "2026-09-09 10:15" : "2026-09-09 13:45");
            verify(TestPlanner.timesOf("A").startsWith(expected), TestPlanner.timesOf("A"));
            verify(scroll.interactive);
        }

        function test_waiting_at_the_side_turns_the_week() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            const from = at(wednesday, 570);
            const side = Qt.point(at("Sunday, September 6, 2026", 0).x - 55, from.y);
            drag(from, side);
            tryVerify(() => named("Sunday, August 30, 2026") !== null);
            const to = at("Friday, September 4, 2026", 570);
            moveTo(side, to);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-04 09:00 – 2026-09-04 10:00");
            verify(shown("Friday, September 4, 2026, A") !== null);
        }

        function test_a_start_in_the_skipped_hour_lands_after_it() {
            PlannerStore.setDisplayStartHour(0);
            while (named("Sunday, March 29, 2026") === null)
                press("Previous");
            const april = "Wednesday, April 1, 2026";
            const sunday = "Sunday, March 29, 2026";
            TestPlanner.addScheduleOn("A", "2026-04-01", "9:00", "11:00");
            const to = at(sunday, 150 + 30);
            drag(at(april, 570), to);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-03-29 03:30 – 2026-03-29 05:30");
        }
    }
}

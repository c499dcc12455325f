import QtQuick
import QtQuick.Window
import QtTest
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Test

// Now is Wednesday, September 9, 2026, 10:20; the week shows 8:00 to 20:00.
Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        id: test

        page: root
        name: "Plan"

        /// The point of a time, in minutes of the day, in the middle of the day's column.
        function at(day: string, minute: int): point {
            const header = matching(screen, item => item instanceof DayHeader && item.Accessible.name.startsWith(day));
            const hour = header.parent.height === 0 ? 0 : 520 / 12;
            return header.mapToItem(root, header.width / 2, header.height + 2 + (minute / 60 - 8) * Math.min(42, hour));
        }

        function take(title: string): point {
            const row = shown(title + ", ");
            const from = row.mapToItem(root, 100, 26);
            mousePress(root, from.x, from.y);
            return from;
        }

        function moveTo(from: point, to: point) {
            for (let step = 1; step <= 8; ++step)
                mouseMove(root, from.x + (to.x - from.x) * step / 8, from.y + (to.y - from.y) * step / 8, -1, Qt.LeftButton);
        }

        function openPlan() {
            TestPlanner.addToDo("Report");
            TestPlanner.addToDo("Books");
            keyClick(Qt.Key_P);
            tryVerify(() => focused() === "Report, No due date");
        }

        function focused(): string {
            return root.Window.activeFocusItem?.Accessible.name ?? "";
        }

        function hasGhost(item: Item): bool {
            if (item instanceof WeekGhost)
                return item.visible;
            for (let i = 0; i < item.children.length; ++i) {
                if (hasGhost(item.children[i]))
                    return true;
            }
            return false;
        }

        function test_an_item_is_dragged_to_the_week_data() {
            return [
                {tag: "beside the page", width: 948},
                {tag: "over the page", width: 688}
            ];
        }

        function test_an_item_is_dragged_to_the_week(data) {
            root.width = data.width;
            openPlan();
            const friday = at("Friday, September 11, 2026", 13 * 60 + 33);
            const from = take("Books");
            moveTo(from, friday);
            tryVerify(() => named("Fri, Sep 11, 1 h planned") !== null, 1000, "the head tells of the day under the drag");
            compare(TestPlanner.scheduleCount(), 0, "nothing is added before the release");
            mouseRelease(root, friday.x, friday.y);
            compare(TestPlanner.timesOf("Books"), "2026-09-11 13:00 – 2026-09-11 14:00");
            verify(TestPlanner.isLinked("Books"));
            verify(TestPlanner.isOpen("Books"));
            tryVerify(() => named("Books, No due date · planned Fri 13:00") !== null);
            PlannerStore.undo();
            compare(TestPlanner.scheduleCount(), 0);
        }

        function test_it_goes_nowhere_beside_the_week_or_with_escape() {
            openPlan();
            const from = take("Books");
            const wednesday = at("Wednesday, September 9, 2026", 700);
            moveTo(from, wednesday);
            moveTo(wednesday, from);
            mouseRelease(root, from.x, from.y);
            take("Books");
            moveTo(from, wednesday);
            keyClick(Qt.Key_Escape);
            mouseRelease(root, wednesday.x, wednesday.y);
            compare(TestPlanner.scheduleCount(), 0);
            verify(PlannerStore.isPlanShown, "Esc ended the drag only");
            take("Books");
            moveTo(from, wednesday);
            keyClick(Qt.Key_Escape);
            moveTo(wednesday, at("Friday, September 11, 2026", 700));
            mouseRelease(root, wednesday.x, wednesday.y);
            compare(TestPlanner.scheduleCount(), 0, "it does not begin again");
        }

        function test_a_drag_ends_with_the_panel_or_with_the_item_data() {
            return [
                {tag: "the panel is closed", end: () => keySequence("Ctrl+Shift+P")},
                {tag: "the item is gone", end: () => TestPlanner.toggleToDo("Books")}
            ];
        }

        function test_a_drag_ends_with_the_panel_or_with_the_item(data) {
            openPlan();
            const wednesday = at("Wednesday, September 9, 2026", 700);
            moveTo(take("Books"), wednesday);
            tryVerify(() => named("Wed, Sep 9, 1 h planned") !== null);
            verify(hasGhost(screen));
            data.end();
            tryVerify(() => named("Books, ") === null);
            mouseRelease(root, wednesday.x, wednesday.y);
            compare(TestPlanner.scheduleCount(), 0);
            verify(!hasGhost(screen), "no ghost is left");
        }

        function test_keys_plan_the_first_free_hour() {
            TestPlanner.addSchedule("A", 9, "10:00", "11:10", "");
            openPlan();
            keyClick(Qt.Key_Down);
            compare(focused(), "Books, No due date");
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("Books"), "2026-09-09 11:10 – 2026-09-09 12:10");
            compare(focused(), "Books, No due date · planned Wed 11:10");
            TestPlanner.addSchedule("B", 9, "12:10", "20:00", "");
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Return);
            compare(TestPlanner.scheduleCount(), 3);
            shown("No free hour on this day.");
        }

        function test_keys_place_it_by_hand() {
            openPlan();
            keyClick(Qt.Key_P);
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            shown("Thu, Sep 10, 11:00 to 12:00");
            compare(TestPlanner.scheduleCount(), 0);
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("Report"), "2026-09-10 11:00 – 2026-09-10 12:00");
            compare(focused(), "Report, No due date · planned Thu 11:00");

            keyClick(Qt.Key_P);
            for (let day = 0; day < 4; ++day)
                keyClick(Qt.Key_Right);
            shown("Sunday, September 13, 2026");
            keyClick(Qt.Key_Escape);
            compare(TestPlanner.scheduleCount(), 1);
            verify(PlannerStore.isPlanShown);
            compare(focused(), "Report, No due date · planned Thu 11:00");
        }

        function test_it_opens_closes_and_stays_as_it_was_left() {
            verify(named("Nothing open.") === null);
            press("Plan");
            shown("Nothing open.");
            open();
            shown("Nothing open.");
            keySequence("Ctrl+Shift+P");
            tryVerify(() => named("Nothing open.") === null);
            keySequence("Ctrl+Shift+P");
            shown("Nothing open.");
            keyClick(Qt.Key_Escape);
            verify(PlannerStore.isPlanShown, "beside the page it stays");
            root.width = 688;
            keyClick(Qt.Key_Escape);
            verify(!PlannerStore.isPlanShown);
        }

        function test_in_the_month_its_key_leads_to_the_week() {
            open();
            press("Month");
            tryVerify(() => named("This week") === null);
            keySequence("Ctrl+Shift+P");
            shown("Nothing open.");
            shown("This week");
        }

        function test_ticking_either_ticks_both() {
            openPlan();
            keyClick(Qt.Key_Return);
            keySequence("Ctrl+Shift+P");
            press("Wednesday, September 9, 2026, Report");
            let tick = null;
            tryVerify(() => (tick = matching(root.Window.contentItem, item => item.Accessible.name === "Report" && item.checked === false)) !== null);
            mouseClick(tick);
            verify(!TestPlanner.isOpen("Report"));
            tryVerify(() => tick.checked);
            const isDone = (type, name) => matching(screen, item => item instanceof type && item.title === name && item.Accessible.name.endsWith(", done")) !== null;
            verify(isDone(EventBlock, "✓ Report"));
            verify(isDone(DayListItem, "Report"));
            TestPlanner.toggleToDo("Report");
            tryVerify(() => !tick.checked);
            verify(!isDone(EventBlock, "✓ Report") && !isDone(DayListItem, "Report"));
            TestPlanner.toggleToDo("Report");
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null);
            press("Month");
            tryVerify(() => isDone(MonthLine, "✓ Report"));
        }
    }
}

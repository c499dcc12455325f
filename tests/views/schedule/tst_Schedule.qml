import QtQuick
import QtQuick.Window
import QtTest
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Test
import Tessaly.Ui

Item {
    id: root

    width: 948
    height: 1300

    Binding {
        target: Language
        property: "isEnglish"
        value: PlannerStore.isEnglish
    }

    Component {
        id: screenComponent

        ScheduleView {
            width: root.width
            height: root.height
        }
    }

    TestCase {
        id: test

        property Item screen: null

        name: "Schedule"
        when: windowShown

        function init() {
            root.width = 948;
            root.height = 1300;
            TestPlanner.reset();
            screen = createTemporaryObject(screenComponent, root);
            waitForRendering(screen);
        }

        /// The visible item below `from` whose accessible name is or begins with `name`.
        function named(name: string, from: Item): Item {
            const exact = matching(from ?? root.Window.contentItem, item => item.Accessible.name === name);
            return exact ?? matching(from ?? root.Window.contentItem, item => item.Accessible.name.startsWith(name));
        }

        function matching(item: Item, test): Item {
            if (!item.visible)
                return null;
            if (item.Accessible.name !== "" && !item.Accessible.ignored && test(item))
                return item;
            for (let i = item.children.length - 1; i >= 0; --i) {
                const found = matching(item.children[i], test);
                if (found !== null)
                    return found;
            }
            return null;
        }

        function shown(name: string): Item {
            let found = null;
            tryVerify(() => (found = named(name)) !== null, 3000, "no item is named " + name);
            return found;
        }

        function press(name: string) {
            mouseClick(shown(name));
        }

        function typeInto(name: string, text: string) {
            mouseClick(shown(name));
            for (const character of text)
                keyClick(character);
        }

        function test_a_schedule_is_added_from_the_form() {
            typeInto("e.g. Microeconomics lecture 1", "Lecture");
            typeInto("Tag (optional)", "Course");
            press("Add schedule");

            compare(TestPlanner.scheduleCount(), 1);
            compare(TestPlanner.tagOf("Lecture"), "Course");
            compare(TestPlanner.colorOf("Lecture"), "#2C66D8");
            verify(shown("Edit, Lecture") !== null);
            verify(shown("Wednesday, September 9, 2026, Lecture, 10:20 – 11:20, Course") !== null);
            verify(shown("e.g. Microeconomics lecture 1").activeFocus);
            compare(shown("e.g. Microeconomics lecture 1").text, "");
        }

        function test_return_adds_and_an_empty_title_does_not() {
            typeInto("e.g. Microeconomics lecture 1", "A");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Return);
            press("Add schedule");

            compare(TestPlanner.scheduleCount(), 1);
        }

        function test_previous_next_and_today_move_the_week() {
            press("Next");
            verify(shown("Wednesday, September 16, 2026, 0 schedules") !== null);
            verify(shown("Sep 16, 2026 schedule") !== null);
            press("Previous");
            press("Previous");
            verify(shown("Wednesday, September 2, 2026, 0 schedules") !== null);
            press("Today");
            verify(shown("Wednesday, September 9, 2026, 0 schedules") !== null);
        }

        function test_a_day_header_and_a_cell_choose_their_day() {
            press("Friday, September 11, 2026");
            verify(shown("Sep 11, 2026 schedule") !== null);
            press("Month");
            press("Thursday, October 1, 2026");
            verify(shown("Oct 1, 2026 schedule") !== null);
            verify(shown("October 2026") !== null);
        }

        function test_arrows_walk_in_the_month() {
            press("Month");
            const cell = shown("Wednesday, September 9, 2026");
            cell.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Left);
            verify(shown("Tuesday, September 15, 2026").activeFocus);
            verify(shown("Sep 9, 2026 schedule") !== null);
            keyClick(Qt.Key_Return);
            verify(shown("Sep 15, 2026 schedule") !== null);

            // A day of the next month stands in another place once that month is shown.
            for (let week = 0; week < 3; ++week)
                keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            verify(shown("Oct 6, 2026 schedule") !== null);
            tryVerify(() => shown("Tuesday, October 6, 2026").activeFocus);
            keyClick(Qt.Key_Return);
            verify(shown("Oct 6, 2026 schedule") !== null);
        }

        function test_empty_time_sets_the_form() {
            root.height = 620;
            waitForRendering(screen);
            const header = shown("Friday, September 11, 2026");
            const below = header.mapToItem(root, header.width / 2, header.height + 2 + 42 * 3 + 21);
            mouseClick(root, below.x, below.y);

            const title = shown("e.g. Microeconomics lecture 1");
            verify(title.activeFocus);
            verify(shown("Sep 11, 2026 schedule") !== null);
            const add = named("Add schedule");
            tryVerify(() => add.mapToItem(root, 0, add.height).y <= root.height);
            typeInto("e.g. Microeconomics lecture 1", "Late");
            press("Add schedule");
            compare(TestPlanner.timesOf("Late"), "2026-09-11 11:30 – 2026-09-11 12:30");
        }

        function test_cancel_and_escape_leave_without_saving() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            press("Edit, Lecture");
            tryVerify(() => shown("Name").activeFocus);
            keyClick("x");
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Save") === null && named("Close") !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null);
            compare(TestPlanner.notesOf("Lecture"), "");
        }

        function test_delete_acts_at_once_and_passes_the_focus_on() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            TestPlanner.addSchedule("B", 9, "10:00", "11:00", "");
            shown("Delete, A").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(TestPlanner.scheduleCount(), 1);
            verify(shown("Delete, B").activeFocus);
            keyClick(Qt.Key_Space);
            compare(TestPlanner.scheduleCount(), 0);
            verify(shown("No schedules for this day.") !== null);
        }

        function test_display_settings_hide_a_calendar_and_move_the_hours() {
            TestPlanner.offerCalendars();
            const requests = TestPlanner.accessRequests();
            press("Display settings");
            compare(TestPlanner.accessRequests(), requests + 1);
            press("Show all");
            compare(TestPlanner.visibleCalendars(), ["club", "courses", "work"]);
            press("iCloud");
            compare(TestPlanner.visibleCalendars(), ["club"]);
            press("Courses");
            compare(TestPlanner.visibleCalendars(), ["club", "courses"]);
            press("Done");
            tryVerify(() => named("Show all") === null);
        }

        function test_sync_settings_open_without_asking() {
            const requests = TestPlanner.accessRequests();
            press("Sync settings");
            compare(TestPlanner.accessRequests(), requests);
            const isOn = PlannerStore.automaticCalendarSync;
            press("Automatically sync Apple Calendar");
            compare(PlannerStore.automaticCalendarSync, !isOn);
            press("Automatically sync Apple Calendar");
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Sync now") === null);
        }

        function test_the_form_fits_a_narrow_page() {
            TestPlanner.offerCalendars();
            root.width = 688;
            press("Add to iCloud Calendar");
            waitForRendering(screen);
            const names = ["Start", "End", "Add schedule", "Calendar", "Tag (optional)", "Color"];
            for (const name of names) {
                const item = shown(name);
                const left = item.mapToItem(root, 0, 0).x;
                verify(left >= 32 && left + item.width <= 656, name + " leaves the page");
            }
        }
    }
}

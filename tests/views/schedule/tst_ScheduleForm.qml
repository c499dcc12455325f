import QtQuick
import Tessaly.Test

Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        page: root
        name: "ScheduleForm"

        function test_a_schedule_is_added_from_the_form() {
            typeInto("Schedule name", "Lecture");
            typeInto("Tag (optional)", "Course");
            press("Add schedule");

            compare(TestPlanner.scheduleCount(), 1);
            compare(TestPlanner.tagOf("Lecture"), "Course");
            compare(TestPlanner.colorOf("Lecture"), "#2C66D8");
            verify(shown("Edit, Lecture") !== null);
            verify(shown("Wednesday, September 9, 2026, Lecture, 10:20 – 11:20, Course") !== null);
            verify(shown("Schedule name").activeFocus);
            compare(shown("Schedule name").text, "");
        }

        function test_return_adds_and_an_empty_title_does_not() {
            typeInto("Schedule name", "A");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Return);
            press("Add schedule");

            compare(TestPlanner.scheduleCount(), 1);
            verify(shown("Schedule name").activeFocus, "the name is what is missing");
        }

        function test_the_form_stays_in_view_while_schedules_are_added() {
            root.height = 620;
            waitForRendering(screen);
            const add = named("Add schedule");
            shown("Schedule name").forceActiveFocus();
            for (const title of "ABC") {
                keyClick(title);
                keyClick(Qt.Key_Return);
                verify(shown("Edit, " + title) !== null);
                tryVerify(() => add.mapToItem(root, 0, add.height).y <= root.height, 1000, title + " pushed the form out");
            }
        }

        function test_a_schedule_elsewhere_is_shown_on_request() {
            shown("Start").forceActiveFocus(Qt.TabFocusReason);
            for (const character of "2026-12-03")
                keyClick(character);
            typeInto("Schedule name", "Far");
            press("Add schedule");
            verify(shown("Added “Far” to Dec 3, 2026.") !== null);
            keyClick(Qt.Key_F6);
            keyClick(Qt.Key_Return);
            verify(shown("Edit, Far") !== null);
            tryVerify(() => named("Show") === null);
        }

        function test_what_was_understood_and_added_is_not_covered() {
            shown("Schedule name").forceActiveFocus(Qt.TabFocusReason);
            verify(named("New schedule") !== null);
            typeInto("Schedule name", "Swim 15:00");
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("Swim"), "2026-09-09 15:00 – 2026-09-09 16:00");
            verify(named("New schedule") === null);
        }

        function test_an_end_before_the_start_is_told() {
            shown("End").forceActiveFocus(Qt.TabFocusReason);
            for (const character of "2026-09-08")
                keyClick(character);
            typeInto("Schedule name", "A");
            verify(matching(screen, item => item.text === "Not after the start: ends at 10:35") !== null);
            press("Add schedule");
            verify(shown("The end of “A” was not after its start. It ends at 10:35 now.") !== null);
            compare(TestPlanner.timesOf("A"), "2026-09-09 10:20 – 2026-09-09 10:35");
        }

        function test_a_click_on_the_frame_is_for_the_title_data() {
            return [
                {tag: "above", dx: 40, dy: -12},
                {tag: "left", dx: -12, dy: 10},
                {tag: "below", dx: 40, dy: 40}
            ];
        }

        function test_a_click_on_the_frame_is_for_the_title(data) {
            const title = shown("Schedule name");
            const place = title.mapToItem(root, data.dx, data.dy);
            mouseClick(root, place.x, place.y);
            verify(title.activeFocus);
        }

        function test_a_refused_time_is_mended_before_anything_is_added() {
            typeInto("Schedule name", "A");
            const start = shown("Start");
            start.forceActiveFocus(Qt.TabFocusReason);
            keySequence(StandardKey.SelectAll);
            for (const character of "tomorrow")
                keyClick(character);
            press("Add schedule");
            compare(TestPlanner.scheduleCount(), 0);
            verify(start.activeFocus);
            compare(start.text, "tomorrow");

            keySequence(StandardKey.SelectAll);
            for (const character of "2026-09-09 18:00")
                keyClick(character);
            press("Add schedule");
            compare(TestPlanner.timesOf("A"), "2026-09-09 18:00 – 2026-09-09 18:15");
            press("Edit, A");
            tryVerify(() => shown("Name").activeFocus);
            shown("End").forceActiveFocus(Qt.TabFocusReason);
            keyClick("x");
            press("Save");
            verify(shown("End").activeFocus);
            compare(shown("End").text, "x");
            press("Cancel");
            tryVerify(() => named("Close") !== null);
            press("Edit");
            compare(shown("End").text, "Sep 9, 2026, 18:15");
        }

        /// Clicks the empty time three and a half hours below the first.
        function tap(day: string) {
            const header = shown(day);
            const below = header.mapToItem(root, header.width / 2, header.height + 2 + 42 * 3 + 21);
            mouseClick(root, below.x, below.y);
        }

        function test_empty_time_sets_the_form_where_it_was_tapped() {
            root.height = 620;
            waitForRendering(screen);
            tap("Friday, September 11, 2026");

            const ghost = shown("New schedule, 11:30 – 12:30");
            verify(ghost.activeFocus);
            verify(shown("Sep 11, 2026 schedule") !== null);
            compare(findChild(screen, "page").contentY, 0);
            for (const character of "Late")
                keyClick(character);
            compare(shown("Schedule name").text, "Late");
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("Late"), "2026-09-11 11:30 – 2026-09-11 12:30");
            verify(shown("Friday, September 11, 2026, Late").activeFocus);
            verify(named("New schedule") === null);
            compare(findChild(screen, "page").contentY, 0);
        }

        function test_ghost_and_form_are_one() {
            tap("Friday, September 11, 2026");
            const ghost = shown("New schedule, 11:30 – 12:30");
            keyClick("a");
            keyClick(Qt.Key_Escape);
            compare(TestPlanner.scheduleCount(), 0);
            compare(shown("Schedule name").text, "");
            verify(named("New schedule") === null);
            verify(shown("Friday, September 11, 2026").activeFocus);

            tap("Friday, September 11, 2026");
            keyClick("b");
            keyClick(Qt.Key_Tab);
            verify(shown("Schedule name").activeFocus);
            keyClick("c");
            compare(ghost.text, "bc");
            keyClick(Qt.Key_Return);
            compare(TestPlanner.timesOf("bc"), "2026-09-11 11:30 – 2026-09-11 12:30");
            verify(shown("Schedule name").activeFocus);
            verify(named("New schedule") === null, "what was just added is not covered");
        }

        function cleanup() {
            TestPlanner.setServiceAvailable(true);
        }

        function test_without_a_calendar_service_the_reason_is_reported_data() {
            return [{tag: "wide", width: 948}, {tag: "narrow", width: 688}];
        }

        function test_without_a_calendar_service_the_reason_is_reported(data) {
            screen.destroy();
            TestPlanner.setServiceAvailable(false);
            init();
            root.width = data.width;
            waitForRendering(screen);

            const toggle = shown("Add to system calendar");
            const reason = shown("Calendars were turned off when Tessaly was started.");
            const right = reason.mapToItem(root, reason.width, 0).x;
            verify(!toggle.enabled);
            verify(right <= data.width - 32);
            const tag = shown("Tag (optional)");
            verify(right < tag.mapToItem(root, 0, 0).x || tag.mapToItem(root, 0, 0).y > reason.mapToItem(root, 0, 10).y);

            press("Sync settings");
            tryVerify(() => named("Sync now") !== null);
            verify(!shown("Automatically sync system calendar").enabled);
            keyClick(Qt.Key_Escape);
        }

        function test_the_form_fits_a_narrow_page() {
            TestPlanner.offerCalendars();
            root.width = 688;
            press("Add to system calendar");
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

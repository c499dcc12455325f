import QtQuick
import QtQuick.Window
import Tessaly.Store
import Tessaly.Test

Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        page: root
        name: "ScheduleSheets"

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

        function test_escape_leads_back_with_the_ring() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            const opener = shown("Edit, Lecture");
            opener.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => shown("Name").activeFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => shown("Edit").visualFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null);
            verify(opener.visualFocus);
        }

        function test_a_schedule_that_leaves_the_day_passes_the_focus_on() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            TestPlanner.addSchedule("B", 9, "10:00", "11:00", "");
            for (const title of ["A", "B"]) {
                const edit = shown("Edit, " + title);
                tryVerify(() => title === "A" || edit.visualFocus, 3000, "and not its Delete");
                edit.forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
                tryVerify(() => shown("Name").activeFocus);
                shown("Start").forceActiveFocus(Qt.TabFocusReason);
                keySequence(StandardKey.SelectAll);
                for (const character of "2026-09-11 09:00")
                    keyClick(character);
                keyClick(Qt.Key_Return);
                tryVerify(() => named("Save") === null);
            }
            tryVerify(() => shown("Wednesday, September 9, 2026").activeFocus);
            compare(TestPlanner.scheduleCount(), 2);
        }

        function test_a_double_click_opens_the_note_data() {
            return [{tag: "in the day list", month: false}, {tag: "in the month", month: true}];
        }

        function test_a_double_click_opens_the_note(data) {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            if (data.month)
                press("Month");
            const target = data.month ? shown("Lecture, 09:00 – 10:00") : shown("Edit, Lecture");
            const place = target.mapToItem(root, data.month ? 20 : -120, target.height / 2);
            mouseDoubleClickSequence(root, place.x, place.y);
            verify(shown("Close") !== null);
            press("Delete");
            tryVerify(() => named("Close") === null);
            compare(TestPlanner.scheduleCount(), 0);
        }

        function test_the_only_schedule_of_a_day_is_deleted_from_its_note() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            press("Wednesday, September 9, 2026, Lecture");
            press("Delete");
            tryVerify(() => named("Close") === null);
            tryVerify(() => shown("Wednesday, September 9, 2026").activeFocus);
            verify(named("New schedule") === null, "nobody has asked for a new one");
        }

        function test_a_task_that_was_not_added_is_saved() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            press("Edit, Lecture");
            typeInto("Add task", "Print");
            press("Save");
            tryVerify(() => named("Save") === null);
            press("Edit, Lecture");
            verify(matching(root.Window.contentItem, item => item.text === "Print") !== null);
            keyClick(Qt.Key_Escape);
        }

        function test_a_copy_that_is_cancelled_is_none() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            press("Wednesday, September 9, 2026, Lecture");
            press("Duplicate");
            tryVerify(() => shown("Name").activeFocus);
            compare(TestPlanner.scheduleCount(), 2);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null && named("Save") === null);
            compare(TestPlanner.scheduleCount(), 1);
        }

        function test_a_duplicate_is_another_schedule_in_its_colour() {
            TestPlanner.addSchedule("Lecture", 9, "9:00", "10:00", "");
            press("Wednesday, September 9, 2026, Lecture");
            press("Duplicate");
            tryVerify(() => shown("Name").activeFocus);
            compare(TestPlanner.scheduleCount(), 2);
            keyClick("2");
            press("Color");
            press("Green");
            tryVerify(() => named("Green") === null);
            press("Save");
            tryVerify(() => named("Save") === null);
            compare(TestPlanner.colorOf("Lecture2"), "#23884D");
            compare(TestPlanner.colorOf("Lecture"), "");
            compare(TestPlanner.timesOf("Lecture2"), TestPlanner.timesOf("Lecture"));
        }

        function test_display_settings_hide_a_calendar_and_move_the_hours() {
            TestPlanner.offerCalendars();
            const requests = TestPlanner.accessRequests();
            press("Display settings");
            compare(TestPlanner.accessRequests(), requests + 1);
            press("Show all");
            compare(TestPlanner.visibleCalendars(), ["club", "courses", "holidays", "work"]);
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
            press("Automatically sync system calendar");
            compare(PlannerStore.automaticCalendarSync, !isOn);
            press("Automatically sync system calendar");
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Sync now") === null);
        }
    }
}

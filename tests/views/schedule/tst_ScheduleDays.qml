import QtQuick
import Tessaly.Test

Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        page: root
        name: "ScheduleDays"

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

        function test_arrows_lead_out_of_the_month() {
            press("Month");
            shown("Friday, October 9, 2026").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right);
            verify(shown("September 2026") !== null);
            keyClick(Qt.Key_Right);
            verify(shown("October 2026") !== null);
            tryVerify(() => shown("Sunday, October 11, 2026").activeFocus);
            for (let week = 0; week < 3; ++week)
                keyClick(Qt.Key_Up);
            verify(shown("September 2026") !== null);
            tryVerify(() => shown("Sunday, September 20, 2026").activeFocus);
            keyClick(Qt.Key_PageUp);
            tryVerify(() => shown("Thursday, August 20, 2026").activeFocus);
        }

        function test_page_keys_turn_weeks_and_keep_the_focus_in_the_week() {
            verify(shown("This week, Sep 6 – 12, 2026") !== null);
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            TestPlanner.addSchedule("B", 16, "9:00", "10:00", "");
            shown("Wednesday, September 9, 2026, A").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_PageDown);
            verify(shown("This week, Sep 13 – 19, 2026") !== null);
            verify(shown("Wednesday, September 16, 2026, B").activeFocus);
            keyClick(Qt.Key_PageDown);
            verify(shown("Wednesday, September 23, 2026, 0 schedules").activeFocus);
            keyClick(Qt.Key_PageUp);
            verify(shown("Wednesday, September 16, 2026, 1 schedule").activeFocus);
        }

        function test_a_full_cell_says_how_many_more_and_opens_the_day() {
            root.height = 620;
            for (const title of "ABCDE")
                TestPlanner.addSchedule(title, 10, "9:00", "10:00", "");
            press("Month");
            const more = shown("3 more on Sep 10");
            compare(more.title, "3 more");
            mouseClick(more);
            verify(shown("Sep 10, 2026 schedule") !== null);
            const last = shown("Edit, E");
            tryVerify(() => last.mapToItem(root, 0, last.height).y <= root.height);
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
    }
}

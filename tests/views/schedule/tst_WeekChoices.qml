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
        name: "WeekChoices"

        readonly property DisplayChoices choices: PlannerStore.displayChoices

        function line(title: string): Item {
            return matching(screen, item => item instanceof MonthLine && item.title === title);
        }

        function test_the_sheet_turns_the_choices_on_and_off() {
            press("Display settings");
            const sunday = "Sunday, September 6, 2026";
            verify(named(sunday) !== null);
            for (const choice of [{name: "Weeks without", key: "hidesWeekend"}, {name: "Week numbers", key: "showsWeekNumbers"}, {name: "All-day and", key: "hasAllDayRow"}, {name: "Only mark", key: "marksHiddenTimes"}, {name: "Lunar days", key: "showsChineseCalendar"}, {name: "Round chosen", key: "roundsTaps"}]) {
                const box = shown(choice.name);
                box.forceActiveFocus(Qt.TabFocusReason);
                verify(!choices[choice.key]);
                keyClick(Qt.Key_Space);
                verify(choices[choice.key], choice.key);
            }
            shown("First day of the week").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(choices.firstWeekday, 1);
            press("Done");
            tryVerify(() => named("Display settings") !== null);
            verify(named(sunday) === null);
            verify(named("This week, Sep 7 – 11, 2026 · Week 37") !== null);
        }

        function test_a_tapped_time_is_rounded_on_request() {
            const place = center(shown("Thursday, September 10, 2026"));
            mouseClick(root, place.x, place.y + 24 + 2 * 42 + 17);
            verify(shown("New schedule, 10:24") !== null);
            choices.roundsTaps = true;
            mouseClick(root, place.x, place.y + 24 + 5 * 42 + 17);
            verify(shown("New schedule, 13:30") !== null);
        }

        function test_the_week_without_weekend_is_walked_by_keys() {
            choices.hidesWeekend = true;
            TestPlanner.addSchedule("A", 11, "9:00", "10:00", "");
            shown("Friday, September 11, 2026, A").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right, Qt.ControlModifier);
            compare(TestPlanner.timesOf("A"), "2026-09-14 09:00 – 2026-09-14 10:00");
            verify(shown("Monday, September 14, 2026, A").activeFocus);
            keyClick(Qt.Key_Left, Qt.ControlModifier);
            compare(TestPlanner.timesOf("A"), "2026-09-11 09:00 – 2026-09-11 10:00");
            keyClick(Qt.Key_PageDown);
            tryVerify(() => named("Friday, September 18, 2026") !== null);
            keyClick(Qt.Key_Home, Qt.AltModifier);
            const header = shown("Wednesday, September 9, 2026");
            const friday = shown("Friday, September 11, 2026, 1 schedule");
            fuzzyCompare(friday.mapToItem(root, friday.width, 0).x, root.width - 32 - 4, 3, "five columns fill the week");
            header.forceActiveFocus(Qt.TabFocusReason);
            for (let day = 0; day < 4; ++day)
                keyClick(Qt.Key_Right);
            verify(friday.activeFocus);
        }

        function test_a_block_is_dragged_in_five_columns() {
            choices.hidesWeekend = true;
            TestPlanner.addSchedule("A", 7, "9:00", "10:00", "");
            const from = center(shown("Monday, September 7, 2026, A"));
            const to = Qt.point(center(shown("Friday, September 11, 2026")).x, from.y);
            drag(from, to);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-11 09:00 – 2026-09-11 10:00");
        }

        function test_long_schedules_stand_above_the_hours() {
            TestPlanner.addScheduleBetween("Fair", "2026-09-08 00:00", "2026-09-11 00:00");
            TestPlanner.addScheduleBetween("Night", "2026-09-09 22:00", "2026-09-10 09:00");
            verify(shown("Tuesday, September 8, 2026, Fair") !== null);
            choices.hasAllDayRow = true;
            const bar = shown("Sep 8 – Sep 10, Fair");
            verify(named("Tuesday, September 8, 2026, Fair") === null);
            const header = shown("Tuesday, September 8, 2026");
            fuzzyCompare(bar.mapToItem(root, 0, 0).x, header.mapToItem(root, 0, 0).x, 1.5);
            verify(bar.width > 2.5 * header.width);
            verify(named("Wednesday, September 9, 2026, Night") !== null);
            verify(named("Thursday, September 10, 2026, Night") !== null);

            mouseClick(bar);
            verify(shown("Close") !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null);
            bar.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right, Qt.ControlModifier);
            compare(TestPlanner.timesOf("Fair"), "2026-09-09 00:00 – 2026-09-12 00:00");
            verify(shown("Sep 9 – Sep 11, Fair").activeFocus);
            PlannerStore.undo();
            compare(TestPlanner.timesOf("Fair"), "2026-09-08 00:00 – 2026-09-11 00:00");
            shown("Sep 8 – Sep 10, Fair").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Delete);
            compare(TestPlanner.scheduleCount(), 1);
        }

        function test_a_schedule_over_midnight_is_resized_by_its_end() {
            choices.hasAllDayRow = true;
            TestPlanner.addScheduleBetween("Night", "2026-09-09 18:00", "2026-09-10 09:30");
            const part = shown("Thursday, September 10, 2026, Night");
            const from = part.mapToItem(root, part.width / 2, part.height - 2);
            const to = Qt.point(from.x, from.y + 42);
            drag(from, to);
            drop(to);
            compare(TestPlanner.timesOf("Night"), "2026-09-09 18:00 – 2026-09-10 10:30");
        }

        function test_what_has_no_line_is_counted_and_chosen() {
            choices.hasAllDayRow = true;
            for (const title of ["A", "B", "C", "D", "E"])
                TestPlanner.addScheduleBetween(title, "2026-09-10 00:00", "2026-09-11 00:00");
            press("2 more on Sep 10");
            tryVerify(() => named("Sep 10, 2026 schedule") !== null);
            verify(named("E, all day") !== null, "the day list has what the row does not show");
        }

        function test_schedules_outside_the_hours_are_marks() {
            TestPlanner.addSchedule("Early", 10, "6:00", "7:00", "");
            TestPlanner.addSchedule("Late", 10, "21:00", "22:00", "");
            TestPlanner.addSchedule("Half", 10, "7:30", "9:00", "");
            verify(shown("Thursday, September 10, 2026, Early") !== null);
            choices.marksHiddenTimes = true;
            verify(named("Thursday, September 10, 2026, Early") === null);
            verify(named("Thursday, September 10, 2026, Half") !== null);
            verify(shown("1 schedule after the shown hours on Sep 10") !== null);
            const mark = shown("1 schedule before the shown hours on Sep 10");
            mark.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => named("Sep 10, 2026 schedule") !== null);
        }

        function test_days_say_what_they_are_in_china() {
            choices.showsChineseCalendar = true;
            press("Next");
            press("Next");
            press("Next");
            verify(shown("Friday, October 2, 2026, lunar month 8, day 22, day off for National Day") !== null);
            press("Month");
            verify(shown("Saturday, October 10, 2026, lunar month 9, day 1, make-up work day for National Day") !== null);
        }

        function test_a_line_of_the_month_is_taken_to_another_day() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            press("Month");
            waitForRendering(screen);
            const from = center(line("A"));
            const to = center(shown("Friday, September 18, 2026"));
            drag(from, to);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 10:00", "nothing changes before the release");
            keyClick(Qt.Key_Escape);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 10:00");

            drag(from, to);
            drop(to);
            compare(TestPlanner.timesOf("A"), "2026-09-18 09:00 – 2026-09-18 10:00");
            verify(shown("Moved to Sep 18, 09:00 to 10:00") !== null);
            verify(named("Wednesday, September 9, 2026").Accessible.selected, "a drag is no click");
            PlannerStore.undo();
            compare(TestPlanner.timesOf("A"), "2026-09-09 09:00 – 2026-09-09 10:00");

        }

        function test_a_line_of_the_month_that_stays_says_why_data() {
            return [{tag: "of a link", read: false, said: "Schedules of a linked calendar cannot be moved."}, {tag: "of a read-only calendar", read: true, said: "The calendar “Holidays” is read-only."}];
        }

        function test_a_line_of_the_month_that_stays_says_why(data) {
            TestPlanner.addFixedSchedule("L", data.read, "2026-09-10 09:00", "2026-09-10 10:00");
            press("Month");
            waitForRendering(screen);
            const to = center(shown("Friday, September 18, 2026"));
            drag(center(line("L")), to);
            verify(shown(data.said) !== null);
            drop(to);
            compare(TestPlanner.timesOf("L"), "2026-09-10 09:00 – 2026-09-10 10:00");
        }

        function test_a_finger_that_rests_takes_a_line_of_the_month() {
            TestPlanner.addSchedule("A", 9, "9:00", "10:00", "");
            press("Month");
            waitForRendering(screen);
            const from = center(line("A"));
            const to = center(shown("Friday, September 11, 2026"));
            const finger = touchEvent(root);
            finger.press(1, root, from.x, from.y).commit();
            tryVerify(() => line("A").opacity < 0.5, 3000, "the finger has rested");
            for (let step = 1; step <= 8; ++step)
                finger.move(1, root, from.x + (to.x - from.x) * step / 8, from.y + (to.y - from.y) * step / 8).commit();
            finger.release(1, root, to.x, to.y).commit();
            compare(TestPlanner.timesOf("A"), "2026-09-11 09:00 – 2026-09-11 10:00");
        }

        function test_keys_walk_in_the_day_list_and_open_a_note_data() {
            return [{tag: "week"}, {tag: "month"}];
        }

        function test_keys_walk_in_the_day_list_and_open_a_note(data) {
            for (const title of ["A", "B", "C"])
                TestPlanner.addSchedule(title, 9, "9:00", "10:00", "");
            if (data.tag === "month")
                press("Month");
            const first = matching(screen, item => item instanceof DayListItem && item.title === "A");
            first.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Up);
            const second = matching(screen, item => item instanceof DayListItem && item.title === "B");
            verify(second.activeFocus);
            keyClick(Qt.Key_Return);
            verify(shown("Close") !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named("Close") === null);
            tryVerify(() => second.activeFocus);
            keyClick(Qt.Key_Delete);
            compare(TestPlanner.scheduleCount(), 2);
        }
    }
}

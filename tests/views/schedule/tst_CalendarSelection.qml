import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Test

Item {
    width: 948
    height: 700

    CalendarSelectionView {
        id: sheet

        onDone: close()
    }

    ScreenCase {
        name: "CalendarSelection"

        function init() {
            TestPlanner.reset();
            sheet.open();
            tryVerify(() => sheet.opened);
        }

        function cleanup() {
            sheet.close();
            tryVerify(() => !sheet.visible);
        }

        function test_2_a_refused_link_stays_and_is_reported() {
            typeInto("https://…/timetable.ics", "webcal://x");
            keyClick(Qt.Key_Return);

            verify(shown("Enter a valid iCalendar link.") !== null);
            compare(shown("https://…/timetable.ics").text, "webcal://x");
            shown("https://…/timetable.ics").clear();
        }

        function test_3_a_link_is_added_updated_and_deleted() {
            typeInto("https://…/timetable.ics", "http://x/timetable.ics");
            mouseClick(shown("Add & import"));
            compare(shown("https://…/timetable.ics").text, "");
            verify(shown("Updating linked calendar…") !== null);

            TestPlanner.answerDownload("BEGIN:VEVENT\nDTSTART:20260909\nDTEND:20260910\nSUMMARY:Fair\nEND:VEVENT\n");
            verify(shown("Linked calendar updated: 1 events imported.") !== null);
            compare(TestPlanner.scheduleCount(), 1);

            mouseClick(shown("Update, timetable"));
            verify(shown("Updating linked calendar…") !== null);
            TestPlanner.answerDownload("");
            compare(TestPlanner.scheduleCount(), 0);

            shown("Delete, timetable").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => named("Update, timetable") === null);
            verify(shown("https://…/timetable.ics").activeFocus);
        }

        function test_3b_a_link_is_tried_before_it_is_added() {
            verify(!shown("Test").enabled);
            typeInto("https://…/timetable.ics", "http://x/timetable.ics");
            mouseClick(shown("Test"));
            verify(shown("Testing…") !== null);
            TestPlanner.answerDownload("BEGIN:VCALENDAR\nX-WR-CALNAME:Courses\nBEGIN:VEVENT\nDTSTART:20260909\nDTEND:20260910\nSUMMARY:Fair\nEND:VEVENT\nEND:VCALENDAR\n");
            tryVerify(() => named("Courses") !== null);
            const choice = shown("Keep up to date");
            tryVerify(() => choice.mapToItem(sheet.bodyFlickable, 0, choice.height).y <= sheet.bodyFlickable.height);
            compare(shown("1 event from Sep 9, 2026 to Sep 9, 2026.").text, "1 event from Sep 9, 2026 to Sep 9, 2026.");
            compare(TestPlanner.scheduleCount(), 0);

            mouseClick(shown("Keep up to date"));
            shown("https://…/timetable.ics").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            TestPlanner.answerDownload("BEGIN:VCALENDAR\nX-WR-CALNAME:Courses\nBEGIN:VEVENT\nSUMMARY:Exam\nEND:VEVENT\nEND:VCALENDAR\n");
            verify(named("Test") !== null);
            verify(named("Keep up to date") === null);
        }

        function test_3c_details_are_in_the_same_sheet_and_give_the_focus_back() {
            shown("Details, timetable").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            verify(sheet.visible);
            verify(shown("Back").activeFocus);
            compare(named("Add & import"), null);
            verify(shown("Keep up to date").checked);
            verify(shown("Skipped 1") !== null);
            verify(shown("Exam, no date, No start time · line 3") !== null);

            mouseClick(shown("Use the calendar’s own name, “Courses”"));
            compare(shown("Name").text, "Courses");
            keyClick(Qt.Key_Escape);
            verify(sheet.visible);
            verify(shown("Details, Courses").activeFocus);

            keyClick(Qt.Key_Space);
            verify(shown("Back").activeFocus);
            keyClick(Qt.Key_Left, Qt.AltModifier);
            verify(shown("Details, Courses").activeFocus);

            keyClick(Qt.Key_Space);
            mouseClick(shown("Delete"));
            compare(named("Details, Courses"), null);
            verify(shown("Add & import") !== null);
        }

        function test_3a_the_field_and_the_result_are_in_view_below_many_links() {
            const isInView = item => {
                const top = item.mapToItem(sheet.contentItem, 0, 0).y;
                const flick = sheet.bodyFlickable;
                return top >= flick.y && top + item.height <= flick.y + flick.height;
            };
            const field = shown("https://…/timetable.ics");
            for (let i = 0; i < 14; ++i) {
                field.forceActiveFocus(Qt.TabFocusReason);
                sheet.bodyFlickable.contentY = 0;
                for (const letter of "http://x/" + i)
                    keyClick(letter);
                verify(isInView(field));
                keyClick(Qt.Key_Return);
                TestPlanner.answerDownload("");
                tryVerify(() => isInView(field));
            }
            verify(sheet.bodyFlickable.contentHeight > sheet.bodyFlickable.height);

            shown("Update, 0").forceActiveFocus(Qt.TabFocusReason);
            tryVerify(() => isInView(shown("Update, 0")));
            keyClick(Qt.Key_Return);
            const told = shown("Updating linked calendar…");
            const bottom = told.mapToItem(sheet.contentItem, 0, told.height).y;
            verify(bottom > 0 && bottom < sheet.height);
            TestPlanner.answerDownload("");
            for (let i = 0; i < 14; ++i) {
                shown("Delete, " + i).forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Space);
            }
        }

        function test_4_calendars_are_listed_by_account() {
            TestPlanner.offerCalendars();
            PlannerStore.calendarSync.requestCalendarAccessAndLoad();
            const work = shown("Work");
            verify(shown("iCloud").checked);

            mouseClick(work);
            verify(!shown("iCloud").checked);
            verify(shown("iCloud").isPartial);
            verify(shown("Nextcloud").checked);
        }
    }
}

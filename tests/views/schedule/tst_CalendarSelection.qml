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

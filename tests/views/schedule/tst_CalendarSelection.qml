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
    height: 700

    Binding {
        target: Language
        property: "isEnglish"
        value: PlannerStore.isEnglish
    }

    CalendarSelectionView {
        id: sheet

        onDone: close()
    }

    TestCase {
        name: "CalendarSelection"
        when: windowShown

        function init() {
            TestPlanner.reset();
            sheet.open();
            tryVerify(() => sheet.opened);
        }

        function cleanup() {
            sheet.close();
            tryVerify(() => !sheet.visible);
        }

        /// The visible item below `from` whose accessible name is `name`.
        function named(name: string, from: Item): Item {
            if (!from.visible)
                return null;
            if (!from.Accessible.ignored && from.Accessible.name === name)
                return from;
            for (let i = from.children.length - 1; i >= 0; --i) {
                const found = named(name, from.children[i]);
                if (found !== null)
                    return found;
            }
            return null;
        }

        function shown(name: string): Item {
            let found = null;
            tryVerify(() => (found = named(name, root.Window.contentItem)) !== null, 3000, "no item is named " + name);
            return found;
        }

        function typeLink(link: string) {
            mouseClick(shown("https://…/timetable.ics"));
            for (const character of link)
                keyClick(character);
        }

        function test_1_until_there_are_calendars_they_are_loading() {
            verify(shown("Loading calendars…") !== null);
        }

        function test_2_a_refused_link_stays_and_is_told() {
            typeLink("webcal://x");
            keyClick(Qt.Key_Return);

            verify(shown("Enter a valid iCalendar link.") !== null);
            compare(shown("https://…/timetable.ics").text, "webcal://x");
            shown("https://…/timetable.ics").clear();
        }

        function test_3_a_link_is_added_updated_and_deleted() {
            typeLink("http://x/timetable.ics");
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

            mouseClick(shown("Delete, timetable"));
            tryVerify(() => named("Update, timetable", root.Window.contentItem) === null);
        }

        function test_4_calendars_are_listed_by_account() {
            TestPlanner.offerCalendars();
            PlannerStore.requestCalendarAccessAndLoad();
            const work = shown("Work");
            verify(shown("iCloud").checked);

            mouseClick(work);
            verify(!shown("iCloud").checked);
            verify(shown("iCloud").isPartial);
            verify(shown("Nextcloud").checked);
        }

        function test_5_escape_and_done_leave() {
            keyClick(Qt.Key_Escape);
            tryVerify(() => !sheet.visible);
            sheet.open();
            tryVerify(() => sheet.opened);
            mouseClick(shown("Done"));
            tryVerify(() => !sheet.visible);
        }
    }
}

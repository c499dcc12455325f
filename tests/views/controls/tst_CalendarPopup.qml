pragma ComponentBehavior: Bound

import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 700
    height: 500

    TapHandler {
        id: beneath

        property int taps: 0

        onTapped: ++taps
    }

    TestCase {
        id: testCase

        property date start: new Date(2026, 8, 11, 17, 5)

        name: "CalendarPopup"
        when: windowShown

        Component {
            id: fieldComponent

            DateTimeField {
                x: 20
                y: 20
                name: "Due"
                value: testCase.start
            }
        }

        Component {
            id: sheetComponent

            Sheet {
                readonly property alias due: due

                title: "Edit"

                DateTimeField {
                    id: due

                    name: "Due"
                    value: testCase.start
                }

                SegmentedControl {
                    id: choice

                    labels: ["a", "b"]
                }

                readonly property alias choice: choice
            }
        }

        function focusItem(): Item {
            return stage.Window.activeFocusItem;
        }

        function test_a_time_is_typed_data() {
            return [
                {tag: "two digits", keys: ["1", "8", Qt.Key_Tab, "3", "0"], result: new Date(2026, 8, 11, 18, 30), text: "30"},
                {tag: "leading zero", keys: ["0", "7", Qt.Key_Tab, "0", "0"], result: new Date(2026, 8, 11, 7, 0), text: "00"},
                {tag: "one digit, then up", keys: ["9", Qt.Key_Up], result: new Date(2026, 8, 11, 10, 5), text: "10"},
                {tag: "typed anew after a step", keys: [Qt.Key_Up, "2", "1"], result: new Date(2026, 8, 11, 21, 5), text: "21"},
                {tag: "an hour that there is not", keys: ["2", "5"], result: new Date(2026, 8, 11, 2, 5), text: "02"}
            ];
        }

        function test_a_time_is_typed(data) {
            const field = createTemporaryObject(fieldComponent, stage);
            field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => !field.activeFocus);
            for (let tabs = 0; tabs < 5 && !(focusItem() as TimePartField); ++tabs)
                keyClick(Qt.Key_Tab);
            for (const key of data.keys)
                keyClick(key);
            compare((focusItem() as TimePartField).text, data.text);
            compare(field.value.getTime(), data.result.getTime());
            keyClick(Qt.Key_Escape);
            tryVerify(() => field.activeFocus);
        }

        function test_the_wheel_turns_the_time() {
            const field = createTemporaryObject(fieldComponent, stage);
            field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => !field.activeFocus);
            for (let tabs = 0; tabs < 5 && !(focusItem() as TimePartField); ++tabs)
                keyClick(Qt.Key_Tab);
            mouseWheel(focusItem(), 10, 10, 0, -120);
            compare(field.value.getTime(), new Date(2026, 8, 11, 16, 5).getTime());
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Down);
            mouseWheel(focusItem(), 10, 10, 0, 120);
            mouseWheel(focusItem(), 10, 10, 0, 120);
            compare(field.value.getTime(), new Date(2026, 8, 11, 16, 10).getTime());
            mouseWheel(focusItem(), 10, 10, 0, -240);
            compare((focusItem() as TimePartField).text, "05");
            keyClick(Qt.Key_Escape);
        }

        function test_a_click_in_a_sheet_stays_in_it() {
            const sheet = createTemporaryObject(sheetComponent, stage);
            sheet.open();
            tryVerify(() => sheet.opened);
            beneath.taps = 0;
            mouseClick(sheet.due, sheet.due.width - 12, sheet.due.height / 2);
            tryVerify(() => !sheet.due.activeFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => sheet.due.activeFocus);
            mouseClick(sheet.choice, sheet.choice.width - 10, sheet.choice.height / 2);
            verify(sheet.opened);
            compare(beneath.taps, 0);
            sheet.close();
            tryVerify(() => !sheet.visible);
        }
    }
}

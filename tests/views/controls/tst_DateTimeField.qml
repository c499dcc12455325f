import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 500
    height: 500

    TestCase {
        id: testCase

        property date start: new Date(2026, 8, 11, 17, 5)

        name: "DateTimeField"
        when: windowShown

        Component {
            id: fieldComponent

            DateTimeField {
                property int edits: 0
                property date last

                x: 20
                y: 20
                name: "Due"
                value: testCase.start
                onEdited: value => {
                    ++edits;
                    last = value;
                }
            }
        }

        function cleanup() {
            Language.isEnglish = false;
        }

        function pressAll(keys: string) {
            const codes = {"<": Qt.Key_Left, ">": Qt.Key_Right, "^": Qt.Key_Up, "v": Qt.Key_Down};
            for (const key of keys)
                keyClick(codes[key] ?? key);
        }

        function test_keys_edit_the_chosen_part_data() {
            const other = new Date(2024, 1, 29, 23, 59);
            const endOfJanuary = new Date(2026, 0, 31, 8, 0);
            return [
                {tag: "year up", keys: "^", result: new Date(2027, 8, 11, 17, 5)},
                {tag: "month down", keys: ">v", result: new Date(2026, 7, 11, 17, 5)},
                {tag: "month keeps to the month's end", from: endOfJanuary, keys: ">^", result: new Date(2026, 1, 28, 8, 0)},
                {tag: "leap day in a common year", from: other, keys: "^", result: new Date(2025, 1, 28, 23, 59)},
                {tag: "hour wraps within the day", from: other, keys: ">>>^", result: new Date(2024, 1, 29, 0, 59)},
                {tag: "minute typed with two digits", keys: ">>>>42", result: new Date(2026, 8, 11, 17, 42)},
                {tag: "hour typed, then minute without a key between", keys: ">>>0942", result: new Date(2026, 8, 11, 9, 42)},
                {tag: "hour 01 hands over to the minutes", keys: ">>>0130", result: new Date(2026, 8, 11, 1, 30)},
                {tag: "year typed in full", keys: "2031", result: new Date(2031, 8, 11, 17, 5)},
                {tag: "date typed from the left", keys: "20280229", result: new Date(2028, 1, 29, 17, 5)},
                {tag: "left stays at the first part", keys: "<<v", result: new Date(2025, 8, 11, 17, 5)},
                {tag: "English begins with the month", isEnglish: true, keys: "^", result: new Date(2026, 9, 11, 17, 5)},
                {tag: "English month typed", isEnglish: true, keys: "12", result: new Date(2026, 11, 11, 17, 5)}
            ];
        }

        function test_keys_edit_the_chosen_part(data) {
            Language.isEnglish = data.isEnglish ?? false;
            const field = createTemporaryObject(fieldComponent, stage, {value: data.from ?? start});
            field.forceActiveFocus(Qt.TabFocusReason);
            pressAll(data.keys);
            compare(field.value.getTime(), data.result.getTime());
            compare(field.last.getTime(), data.result.getTime());
        }

        function test_an_assigned_value_is_no_edit() {
            const field = createTemporaryObject(fieldComponent, stage);
            field.value = new Date(2026, 0, 1, 0, 0);
            compare(field.edits, 0);
        }

        function test_the_calendar_opens_by_key_and_moves_by_day_and_month() {
            const field = createTemporaryObject(fieldComponent, stage);
            field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => !field.activeFocus);
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_PageUp);
            compare(field.value.getTime(), new Date(2026, 7, 19, 17, 5).getTime());
            keyClick(Qt.Key_Escape);
            tryVerify(() => field.activeFocus);
            keyClick(Qt.Key_Up);
            compare(field.value.getFullYear(), 2027);
        }

        function test_a_click_on_the_icon_opens_the_calendar() {
            const field = createTemporaryObject(fieldComponent, stage);
            mouseClick(field, field.width - 12, field.height / 2);
            tryVerify(() => !field.activeFocus);
            keyClick(Qt.Key_Left);
            compare(field.value.getDate(), 10);
            keyClick(Qt.Key_Escape);
        }

        function test_a_click_on_a_part_chooses_it() {
            const field = createTemporaryObject(fieldComponent, stage);
            mouseClick(field, 14, field.height / 2);
            keyClick(Qt.Key_Up);
            compare(field.value.getFullYear(), 2027);
            compare(field.value.getMonth(), 8);
        }
    }
}

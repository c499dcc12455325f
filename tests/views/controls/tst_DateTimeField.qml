import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 500
    height: 500

    TextInput {
        id: clipboard
    }

    TestCase {
        id: testCase

        property date start: new Date(2026, 8, 11, 17, 5)

        name: "DateTimeField"
        when: windowShown

        Component {
            id: fieldComponent

            DateTimeField {
                property date last

                x: 20
                y: 20
                name: "Due"
                value: testCase.start
                onEdited: value => last = value
            }
        }

        function cleanup() {
            Language.isEnglish = false;
        }

        function pressAll(keys: string) {
            const codes = {"←": Qt.Key_Left, "→": Qt.Key_Right, "↑": Qt.Key_Up, "↓": Qt.Key_Down, "⇤": Qt.Key_Home, "⇥": Qt.Key_End, "⌫": Qt.Key_Backspace};
            for (const key of keys) {
                if (key === "∀")
                    keySequence(StandardKey.SelectAll);
                else
                    keyClick(codes[key] ?? key);
            }
        }

        function test_keys_edit_the_chosen_part_data() {
            const other = new Date(2024, 1, 29, 23, 59);
            const endOfJanuary = new Date(2026, 0, 31, 8, 0);
            return [
                {tag: "year up", keys: "↑", result: new Date(2027, 8, 11, 17, 5)},
                {tag: "month down", keys: "→↓", result: new Date(2026, 7, 11, 17, 5)},
                {tag: "month keeps to the month's end", from: endOfJanuary, keys: "→↑", result: new Date(2026, 1, 28, 8, 0)},
                {tag: "leap day in a common year", from: other, keys: "↑", result: new Date(2025, 1, 28, 23, 59)},
                {tag: "hour wraps within the day", from: other, keys: "→→→↑", result: new Date(2024, 1, 29, 0, 59)},
                {tag: "minute typed with two digits", keys: "→→→→42", result: new Date(2026, 8, 11, 17, 42)},
                {tag: "hour typed, then minute without a key between", keys: "→→→0942", result: new Date(2026, 8, 11, 9, 42)},
                {tag: "hour 01 hands over to the minutes", keys: "→→→0130", result: new Date(2026, 8, 11, 1, 30)},
                {tag: "year typed in full", keys: "2031", result: new Date(2031, 8, 11, 17, 5)},
                {tag: "date typed from the left", keys: "20280229", result: new Date(2028, 1, 29, 17, 5)},
                {tag: "left stays at the first part", keys: "←←↓", result: new Date(2025, 8, 11, 17, 5)},
                {tag: "English begins with the month", isEnglish: true, keys: "↑", result: new Date(2026, 9, 11, 17, 5)},
                {tag: "English month typed", isEnglish: true, keys: "12", result: new Date(2026, 11, 11, 17, 5)},
                {tag: "first and last part", keys: "⇥↓⇤↑", result: new Date(2027, 8, 11, 17, 4)},
                {tag: "separators lead on", keys: "-/.:↑", result: new Date(2026, 8, 11, 17, 6)},
                {tag: "ISO 8601", keys: "2026-11-21 09:30", result: new Date(2026, 10, 21, 9, 30)},
                {tag: "single digits", keys: "2026/3/4 9:07", result: new Date(2026, 2, 4, 9, 7)},
                {tag: "English text", isEnglish: true, keys: "Nov 21, 2026, 09:30", result: new Date(2026, 10, 21, 9, 30)},
                {tag: "English month in full", isEnglish: true, keys: "june 3, 27→", result: new Date(2027, 5, 3, 17, 5)},
                {tag: "the leap day before its year", isEnglish: true, keys: "Feb 29, 2028", result: new Date(2028, 1, 29, 17, 5)},
                {tag: "a month keeps to its end until a day is typed", isEnglish: true, from: endOfJanuary, keys: "Feb ↑⇤↑", result: new Date(2026, 3, 1, 8, 0)},
                {tag: "an erased day is as before", keys: "→→2⌫→0", result: new Date(2026, 8, 11, 0, 5)},
                {tag: "the last character is erased", keys: "→9x⌫8", result: new Date(2026, 8, 8, 17, 5)},
                {tag: "ISO 8601 in the English field", isEnglish: true, keys: "2026-12-24 18:00", result: new Date(2026, 11, 24, 18, 0)},
                {tag: "with T and seconds", keys: "2026-12-24T18:00:15", result: new Date(2026, 11, 24, 18, 0)},
                {tag: "English in the Chinese field", keys: "Dec 24, 2026", result: new Date(2026, 11, 24, 17, 5)},
                {tag: "over the whole text", isEnglish: true, keys: "∀December 24, 2026, 18:00", result: new Date(2026, 11, 24, 18, 0)},
                {tag: "over the whole text, with a slip", isEnglish: true, keys: "∀2026-12-4⌫24", result: new Date(2026, 11, 24, 17, 5)},
                {tag: "over what is typed", keys: "∀x∀2026-12-24", result: new Date(2026, 11, 24, 17, 5)},
                {tag: "hour up over the gap of daylight saving", from: new Date(2026, 2, 29, 1, 30), keys: "→→→↑", result: new Date(2026, 2, 29, 3, 30)},
                {tag: "hour down over the gap", from: new Date(2026, 2, 29, 3, 30), keys: "→→→↓", result: new Date(2026, 2, 29, 1, 30)},
                {tag: "minute up over the gap", from: new Date(2026, 2, 29, 1, 59), keys: "⇥↑", result: new Date(2026, 2, 29, 3, 0)},
                {tag: "a day on which the time is in the gap", from: new Date(2026, 2, 28, 2, 30), keys: "→→↑", result: new Date(2026, 2, 29, 3, 30)},
                {tag: "a time in the gap, typed", from: new Date(2026, 2, 29, 12, 0), keys: "→→→0230", result: new Date(2026, 2, 29, 3, 30)},
                {tag: "a time that comes twice, typed", from: new Date(2026, 9, 25, 12, 0), keys: "→→→0230", result: new Date(1792888200000)},
                {tag: "a time that comes twice, written out", keys: "2026-10-25 02:30", result: new Date(1792888200000)},
                {tag: "within the hour that comes twice", from: new Date(1792888200000), keys: "⇥↑", result: new Date(1792888260000)}
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

        function test_tab_leads_to_the_first_part() {
            const field = createTemporaryObject(fieldComponent, stage);
            const other = createTemporaryObject(fieldComponent, stage, {y: 60});
            field.forceActiveFocus(Qt.TabFocusReason);
            pressAll("2027-10");
            keyClick(Qt.Key_Tab);
            verify(other.activeFocus);
            keyClick(Qt.Key_Backtab);
            pressAll("↑");
            compare(field.value.getTime(), new Date(2028, 9, 11, 17, 5).getTime());

            pressAll("→→↓");
            other.forceActiveFocus(Qt.MouseFocusReason);
            field.forceActiveFocus(Qt.ActiveWindowFocusReason);
            pressAll("↓");
            compare(field.value.getTime(), new Date(2028, 9, 9, 17, 5).getTime(), "the window came back");
        }

        function test_what_is_no_moment_is_refused_data() {
            return [
                {tag: "day beyond the month", keys: "2026-02-30"},
                {tag: "hour", keys: "→→→25:00"},
                {tag: "month", keys: "→13"},
                {tag: "incomplete year", isEnglish: true, keys: "Nov 21, 202, "},
                {tag: "other words", isEnglish: true, keys: "Nov 21st, 2026"},
                {tag: "afternoon", isEnglish: true, keys: "Nov 21, 2026, 09:30 pm"},
                {tag: "an empty part", keys: "2026--21"},
                {tag: "no such day in another form", isEnglish: true, keys: "2026-02-30"},
                {tag: "half a date over the whole text", keys: "∀2026-1", isBegun: true},
                {tag: "other words over the whole text", keys: "∀tomorrow"}
            ];
        }

        function test_what_is_no_moment_is_refused(data) {
            Language.isEnglish = data.isEnglish ?? false;
            const field = createTemporaryObject(fieldComponent, stage);
            const frame = field.background as FieldFrame;
            verify(field.accept());
            field.forceActiveFocus(Qt.TabFocusReason);
            pressAll(data.keys);
            compare(frame.isRefused, !data.isBegun);
            compare(field.value.getTime(), start.getTime());

            // It stands until it is mended; what would use the value is led back to it.
            stage.forceActiveFocus();
            verify(frame.isRefused);
            verify(field.Accessible.description.includes("2026-12-24 18:00"));
            verify(!field.accept());
            verify(field.activeFocus);
            keyClick(Qt.Key_Escape);
            compare(frame.isRefused, false);
            compare(field.Accessible.description, "");
            verify(field.accept());
            compare(field.value.getTime(), start.getTime());
        }

        function test_select_all_is_shown() {
            const field = createTemporaryObject(fieldComponent, stage);
            field.forceActiveFocus(Qt.TabFocusReason);
            keySequence(StandardKey.SelectAll);
            compare(field.selectedText, field.text);
            keyClick(Qt.Key_Delete);
            compare(field.text, "");
            stage.forceActiveFocus();
            compare(field.text, "2026年9月11日 17:05");
        }

        function test_a_whole_text_is_pasted_data() {
            const november = new Date(2026, 10, 21, 9, 30);
            return [
                {tag: "ISO 8601", text: "2026-11-21 09:30", result: november},
                {tag: "with T and seconds", text: " 2026-11-21T09:30:15\n", result: november},
                {tag: "English", text: "Nov 21, 2026, 09:30", result: november},
                {tag: "Chinese", isEnglish: true, text: "2026年11月21日 09:30", result: november},
                {tag: "date alone", text: "2026-11-21", result: new Date(2026, 10, 21, 17, 5)},
                {tag: "no such day", text: "2026-02-30 09:30", isRefused: true},
                {tag: "another text", text: "tomorrow", isRefused: true}
            ];
        }

        function test_a_whole_text_is_pasted(data) {
            Language.isEnglish = data.isEnglish ?? false;
            clipboard.text = data.text;
            clipboard.selectAll();
            clipboard.cut();
            const field = createTemporaryObject(fieldComponent, stage);
            field.forceActiveFocus(Qt.TabFocusReason);
            keySequence(StandardKey.Paste);
            compare(field.value.getTime(), (data.result ?? start).getTime());
            compare((field.background as FieldFrame).isRefused, data.isRefused ?? false);
        }

        function test_the_widest_moment_fits() {
            const field = createTemporaryObject(fieldComponent, stage, {value: new Date(2040, 9, 10, 20, 44)});
            verify(!field.showsElided);
            field.isDateOnly = true;
            verify(!field.showsElided);
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

        function test_a_click_on_a_part_chooses_it() {
            const field = createTemporaryObject(fieldComponent, stage);
            mouseClick(field, 14, field.height / 2);
            keyClick(Qt.Key_Up);
            compare(field.value.getFullYear(), 2027);
            compare(field.value.getMonth(), 8);
        }
    }
}

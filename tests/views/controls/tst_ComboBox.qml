import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 500
    height: 500

    TestCase {
        name: "ComboBox"
        when: windowShown

        Component {
            id: comboComponent

            AppComboBox {
                x: 40
                y: 200
                name: "Category"
                model: ["Uncategorized", "Lecture notes", "Reading notes", "Recipes"]
                onActivated: index => currentIndex = index
            }
        }

        Component {
            id: hoursComponent

            AppComboBox {
                property int hour: 9

                x: 40
                y: 200
                name: "Start"
                model: Array.from({ length: 24 }, (_, place) => String(place).padStart(2, "0") + ":00")
                currentIndex: hour
                onActivated: index => hour = index
            }
        }

        SignalSpy {
            id: activatedSpy

            signalName: "activated"
        }

        function test_without_entries_it_does_not_open_data() {
            return [
                {tag: "click", open: combo => mouseClick(combo)},
                {tag: "space", open: () => keyClick(Qt.Key_Space)},
                {tag: "return", open: () => keyClick(Qt.Key_Return)},
                {tag: "assistive technology", open: combo => combo.Accessible.pressAction()}
            ];
        }

        function test_without_entries_it_does_not_open(data) {
            const combo = createTemporaryObject(comboComponent, stage, {model: []});
            combo.forceActiveFocus(Qt.TabFocusReason);
            data.open(combo);
            verify(!combo.popup.visible);
            combo.model = ["Recipes"];
            data.open(combo);
            verify(combo.popup.visible);
        }

        function test_typing_chooses_in_a_closed_box_data() {
            return [
                {tag: "first letter", keys: "l", index: 1},
                {tag: "several letters", keys: "rec", index: 3},
                {tag: "a letter again leads on", keys: "rr", index: 3},
                {tag: "and round", keys: "rrr", index: 2},
                {tag: "no match keeps the value", keys: "x", index: 0}
            ];
        }

        function test_typing_chooses_in_a_closed_box(data) {
            const combo = createTemporaryObject(comboComponent, stage);
            combo.forceActiveFocus(Qt.TabFocusReason);
            for (const key of data.keys)
                keyClick(key);
            compare(combo.currentIndex, data.index);
            compare(combo.Accessible.description, combo.textAt(data.index));
            verify(!combo.popup.visible);
        }

        function test_keys_in_quick_succession_are_one_beginning_data() {
            return [{tag: "closed", isOpen: false}, {tag: "open", isOpen: true}];
        }

        function test_keys_in_quick_succession_are_one_beginning(data) {
            const combo = createTemporaryObject(hoursComponent, stage);
            combo.forceActiveFocus(Qt.TabFocusReason);
            if (data.isOpen) {
                keyClick(Qt.Key_Space);
                tryVerify(() => combo.popup.opened);
            }
            keyClick("0");
            keyClick("8");
            if (data.isOpen) {
                compare(combo.highlightedIndex, 8);
                compare(combo.hour, 9);
                keyClick(Qt.Key_Return);
            }
            compare(combo.hour, 8);
            // Still bound.
            combo.hour = 20;
            compare(combo.currentIndex, 20);
        }

        function test_the_list_opens_over_the_box_and_return_takes_the_row() {
            const combo = createTemporaryObject(comboComponent, stage, {currentIndex: 2});
            activatedSpy.target = combo;
            activatedSpy.clear();
            combo.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => combo.popup.opened);
            compare(combo.popup.contentItem.parent.Accessible.name, combo.name);
            compare(combo.popup.y + combo.popup.padding + 2 * combo.entryHeight, (combo.height - combo.entryHeight) / 2);
            keyClick(Qt.Key_Up);
            compare(combo.Accessible.description, combo.textAt(1), "the entry reached is told");
            const entries = Array.from(combo.popup.contentItem.contentItem.children).filter(item => item.Accessible.selectable);
            compare(entries.filter(entry => entry.Accessible.selected).map(entry => entry.Accessible.name), [combo.textAt(1)]);
            keyClick(Qt.Key_Return);
            tryVerify(() => !combo.popup.visible);
            compare(combo.currentIndex, 1);
            compare(activatedSpy.count, 1);
        }

        function test_escape_leaves_the_box_as_it_was() {
            const combo = createTemporaryObject(comboComponent, stage);
            combo.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => combo.popup.opened);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !combo.popup.visible);
            compare(combo.currentIndex, 0);
            compare(combo.Accessible.description, combo.textAt(0));
            verify(combo.visualFocus);
        }
    }
}

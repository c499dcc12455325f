import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 500
    height: 500

    TestCase {
        id: testCase

        name: "Choices"
        when: windowShown

        Component {
            id: segmentsComponent

            SegmentedControl {
                property int choices: 0

                x: 20
                y: 20
                name: "View"
                labels: ["Edit", "Preview", "Live"]
                onChosen: index => {
                    ++choices;
                    currentIndex = index;
                }
            }
        }

        Component {
            id: circleComponent

            CompletionCircle {
                property int clicks: 0

                x: 100
                y: 100
                itemTitle: "Tidy the shelves"
                onClicked: ++clicks
            }
        }

        Component {
            id: wellComponent

            ColorWell {
                property int edits: 0

                x: 250
                y: 20
                name: "Color"
                onEdited: value => {
                    ++edits;
                    hex = value;
                }
            }
        }

        Component {
            id: sliderComponent

            AppSlider {
                property real weight: 2.5

                x: 20
                y: 60
                name: "Weight"
                from: 0.1
                to: 10
                stepSize: 0.1
                value: weight
                onMoved: weight = value
            }
        }

        function test_arrows_change_the_segment_and_stop_at_the_ends() {
            const segments = createTemporaryObject(segmentsComponent, stage);
            segments.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Left);
            compare(segments.choices, 0);
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Right);
            compare(segments.currentIndex, 2);
            compare(segments.choices, 2);
        }

        function test_a_click_chooses_a_segment_anywhere_on_it() {
            const segments = createTemporaryObject(segmentsComponent, stage, {width: 300});
            waitForItemPolished(segments);
            mouseClick(segments, 108, 4);
            compare(segments.currentIndex, 1);
            mouseClick(segments, 292, 28);
            compare(segments.currentIndex, 2);
        }

        function test_the_circle_leaves_its_state_to_the_owner() {
            const circle = createTemporaryObject(circleComponent, stage);
            verify(circle.width >= 28 && circle.height >= 28);
            mouseClick(circle, 1, 1);
            circle.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(circle.clicks, 2);
            verify(!circle.isComplete);
        }

        function test_the_slider_moves_by_keys_within_its_ends_data() {
            return [
                {tag: "right", key: Qt.Key_Right, value: 2.6},
                {tag: "page up", key: Qt.Key_PageUp, value: 3.5},
                {tag: "page down at the end", from: 0.6, key: Qt.Key_PageDown, value: 0.1},
                {tag: "home", key: Qt.Key_Home, value: 0.1},
                {tag: "end", key: Qt.Key_End, value: 10}
            ];
        }

        function test_the_slider_moves_by_keys_within_its_ends(data) {
            const slider = createTemporaryObject(sliderComponent, stage, {weight: data.from ?? 2.5});
            slider.forceActiveFocus(Qt.TabFocusReason);
            keyClick(data.key);
            fuzzyCompare(slider.weight, data.value, 0.001);
            // Still bound.
            slider.weight = 1;
            compare(slider.value, 1);
        }

        function test_hex_text_is_applied_only_when_it_is_a_colour_data() {
            return [
                {tag: "six digits", typed: "#12ab9f", hex: "#12AB9F", edits: 1, leave: Qt.Key_Return},
                {tag: "too short", typed: "#12ab9", hex: "#2C66D8", edits: 0},
                {tag: "no digit", typed: "#12ab9g", hex: "#2C66D8", edits: 0}
            ];
        }

        function test_hex_text_is_applied_only_when_it_is_a_colour(data) {
            const well = createTemporaryObject(wellComponent, stage);
            mouseClick(well);
            tryVerify(() => !well.activeFocus);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_A, Qt.ControlModifier);
            for (const key of data.typed)
                keyClick(key);
            compare(well.hex, data.hex);
            compare(well.edits, data.edits);
            keyClick(data.leave ?? Qt.Key_Escape);
            tryVerify(() => well.activeFocus);
        }

        function test_a_swatch_stores_its_light_value_in_dark_mode_too() {
            Theme.isDark = true;
            const well = createTemporaryObject(wellComponent, stage);
            mouseClick(well);
            tryVerify(() => !well.activeFocus);
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Space);
            compare(well.hex, "#7F50CC");
            tryVerify(() => well.activeFocus, 3000, "the colours have closed");
            Theme.isDark = false;
        }
    }
}

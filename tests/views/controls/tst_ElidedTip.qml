import QtQuick
import QtQuick.Templates as T
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 400
    height: 200

    Component {
        id: textComponent

        AppText {
            x: 20
            y: 20
            width: 120

            ElidedTip {}
        }
    }

    Component {
        id: tipComponent

        AppToolTip {
            delay: 0
            visible: true
        }
    }

    TestCase {
        name: "ElidedTip"
        when: windowShown

        function test_only_what_is_cut_off_is_reported_data() {
            const words = "Microeconomics, the third lecture";
            return [
                {tag: "ends in dots", isShown: true, label: {text: words}},
                {tag: "fades", isShown: true, label: {text: words, elide: Text.ElideNone}},
                {tag: "too many lines", isShown: true, label: {text: words.repeat(9), isMultiline: true, maximumLineCount: 3}},
                {tag: "wraps", isShown: false, label: {text: words, isMultiline: true}},
                {tag: "fits", isShown: false, label: {text: "Lecture"}}
            ];
        }

        function tips(): int {
            return Array.from(stage.T.Overlay.overlay?.children ?? []).filter(item => item.visible).length;
        }

        function test_only_what_is_cut_off_is_reported(data) {
            const label = createTemporaryObject(textComponent, stage, data.label);
            waitForItemPolished(label);
            mouseMove(label, 30, 8);
            compare((label.children[0] as ElidedTip).isShown, data.isShown);
            if (data.isShown)
                tryVerify(() => tips() === 1);
            mouseMove(stage, 300, 150);
            tryVerify(() => tips() === 0);
        }

        function test_a_tip_is_as_wide_as_its_longest_line_data() {
            return [
                {tag: "one line", text: "Previous", lines: 1},
                {tag: "several lines", text: "✓ Outline\n○ First draft, second part", lines: 2},
                {tag: "too long", text: "Microeconomics, the third lecture ".repeat(4), lines: 3}
            ];
        }

        function test_a_tip_is_as_wide_as_its_longest_line(data) {
            const tip = createTemporaryObject(tipComponent, stage, {text: data.text});
            tryVerify(() => tip.opened);
            compare(tip.contentItem.lineCount, data.lines);
            const longest = Math.ceil(tip.contentItem.contentWidth) + 18;
            verify(data.lines === 3 ? tip.width === 360 : Math.abs(tip.width - longest) <= 1, tip.width + " for " + longest);
        }
    }
}

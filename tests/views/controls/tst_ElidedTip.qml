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

    TestCase {
        name: "ElidedTip"
        when: windowShown

        function test_only_what_is_cut_off_is_told_data() {
            const words = "Microeconomics, the third lecture";
            return [
                {tag: "ends in dots", isTold: true, label: {text: words}},
                {tag: "fades", isTold: true, label: {text: words, elide: Text.ElideNone}},
                {tag: "too many lines", isTold: true, label: {text: words.repeat(9), isMultiline: true, maximumLineCount: 3}},
                {tag: "wraps", isTold: false, label: {text: words, isMultiline: true}},
                {tag: "fits", isTold: false, label: {text: "Lecture"}}
            ];
        }

        function tips(): int {
            return Array.from(stage.T.Overlay.overlay?.children ?? []).filter(item => item.visible).length;
        }

        function test_only_what_is_cut_off_is_told(data) {
            const label = createTemporaryObject(textComponent, stage, data.label);
            waitForItemPolished(label);
            mouseMove(label, 30, 8);
            compare((label.children[0] as ElidedTip).isTold, data.isTold);
            if (data.isTold)
                tryVerify(() => tips() === 1);
            mouseMove(stage, 300, 150);
            tryVerify(() => tips() === 0);
        }
    }
}

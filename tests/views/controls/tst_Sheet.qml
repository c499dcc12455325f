import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 700
    height: 500

    AppButton {
        id: opener

        text: "Open"
    }

    TestCase {
        id: testCase

        name: "Sheet"
        when: windowShown

        Component {
            id: sheetComponent

            Sheet {
                id: sheet

                property int leavings: 0
                property int saves: 0
                property int returns: 0
                readonly property alias titleField: titleField
                readonly property alias noteField: noteField
                readonly property alias newTask: newTask
                readonly property alias checkBox: checkBox
                readonly property alias combo: combo
                readonly property alias lowest: lowest
                readonly property alias save: save

                title: "Edit"
                primaryButton: save
                initialFocus: titleField
                onLeaving: ++leavings

                AppTextField {
                    id: titleField
                }

                MultilineField {
                    id: noteField
                }

                AppTextField {
                    id: newTask

                    keepsReturn: true
                    onAccepted: ++sheet.returns
                }

                AppCheckBox {
                    id: checkBox
                }

                AppComboBox {
                    id: combo

                    model: ["a", "b"]
                }

                Item {
                    width: 10
                    height: 900
                }

                AppCheckBox {
                    id: lowest

                    text: "Below the fold"
                }

                foot: [
                    AppButton {
                        id: save

                        anchors.right: parent.right
                        kind: AppButton.Primary
                        text: "Save"
                        onClicked: ++sheet.saves
                    }
                ]
            }
        }

        property Sheet sheet: null

        function init() {
            opener.forceActiveFocus(Qt.TabFocusReason);
            sheet = createTemporaryObject(sheetComponent, stage);
            sheet.open();
            tryVerify(() => sheet.opened);
        }

        function cleanup() {
            sheet.close();
            tryVerify(() => !sheet.visible);
        }

        function test_focus_starts_at_the_first_field_and_returns_to_the_opener() {
            verify(sheet.titleField.activeFocus);
            sheet.close();
            tryVerify(() => opener.activeFocus);
            verify(opener.visualFocus);
        }

        function test_tab_stays_inside() {
            for (let i = 0; i < 9; ++i) {
                keyClick(Qt.Key_Tab);
                verify(!opener.activeFocus);
            }
            for (let i = 0; i < 9; ++i) {
                keyClick(Qt.Key_Backtab);
                verify(!opener.activeFocus);
            }
        }

        function test_escape_first_closes_a_popup_then_leaves() {
            sheet.combo.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => sheet.combo.popup.opened);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !sheet.combo.popup.visible);
            compare(sheet.leavings, 0);
            keyClick(Qt.Key_Escape);
            compare(sheet.leavings, 1);
            verify(sheet.visible);
        }

        function test_return_presses_the_primary_button_but_not_in_multi_line_fields() {
            keyClick(Qt.Key_Return);
            compare(sheet.saves, 1);
            for (const item of [sheet.checkBox, sheet.combo]) {
                item.forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
            }
            compare(sheet.saves, 3);
            verify(!sheet.combo.popup.visible);
            sheet.newTask.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(sheet.returns, 1);
            compare(sheet.saves, 3);
            sheet.noteField.textArea.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(sheet.saves, 3);
            compare(sheet.noteField.text, "\n");
            sheet.save.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(sheet.saves, 4);
        }

        function test_a_click_on_the_scrim_does_nothing() {
            mouseClick(stage, 5, 495);
            compare(sheet.leavings, 0);
            verify(sheet.visible);
        }

        function test_typing_brings_the_field_back_into_view() {
            sheet.lowest.forceActiveFocus(Qt.TabFocusReason);
            tryVerify(() => sheet.bodyFlickable.contentY > 400);
            sheet.titleField.forceActiveFocus(Qt.TabFocusReason);
            tryVerify(() => sheet.bodyFlickable.contentY < 100);
            sheet.bodyFlickable.contentY = 400;
            keyClick("x");
            verify(sheet.bodyFlickable.contentY < 100);
        }

        function test_only_the_body_scrolls_and_follows_the_focus() {
            verify(sheet.height <= stage.height - 48);
            compare(sheet.bodyFlickable.contentY, 0);
            for (const next of [sheet.noteField.textArea, sheet.newTask, sheet.checkBox, sheet.combo, sheet.lowest]) {
                keyClick(Qt.Key_Tab);
                verify(next.activeFocus);
            }
            tryVerify(() => sheet.bodyFlickable.contentY > 400);
            verify(sheet.save.mapToItem(null, 0, 0).y < stage.height);
        }
    }
}

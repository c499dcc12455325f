import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 500
    height: 500

    RowAction {
        id: beneath

        property int clicks: 0

        x: 420
        y: 460
        text: "Delete"
        onClicked: ++clicks
    }

    FocusScope {
        id: scope

        focus: true
    }

    TestCase {
        id: testCase

        name: "Popups"
        when: windowShown

        Component {
            id: comboComponent

            AppComboBox {
                x: 20
                y: 20
                model: ["a", "b"]
            }
        }

        Component {
            id: wellComponent

            ColorWell {
                x: 220
                y: 20
            }
        }

        Component {
            id: dateComponent

            DateTimeField {
                x: 20
                y: 20
                value: new Date(2026, 8, 11, 17, 5)
            }
        }

        Component {
            id: menuComponent

            AppMenu {
                id: menu

                AppMenuItem {
                    text: "Copy"
                }

                Component.onCompleted: menu.popup(20, 20)
            }
        }

        Component {
            id: openerComponent

            IconButton {
                id: opener

                readonly property alias menu: menu

                x: 200
                y: 200
                iconName: "ellipsis"
                text: "More"
                popup: menu
                onClicked: menu.popup(opener, 0, opener.height + 4)

                AppMenu {
                    id: menu

                    AppMenuItem {
                        text: "Copy"
                    }
                }
            }
        }

        function isShown(text: string, item: Item): bool {
            return item.visible && (item.text === text || Array.from(item.children).some(child => isShown(text, child)));
        }

        function test_no_tooltip_covers_what_its_button_has_opened_data() {
            return [{tag: "click"}, {tag: "key"}];
        }

        function test_no_tooltip_covers_what_its_button_has_opened(data) {
            const opener = createTemporaryObject(openerComponent, stage);
            const overlay = opener.T.Overlay.overlay;
            mouseMove(stage, 5, 5);
            mouseMove(opener, 10, 10);
            tryVerify(() => isShown("More", overlay));

            if (data.tag === "click")
                mouseClick(opener, 10, 10);
            else {
                opener.forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
            }
            tryVerify(() => opener.menu.opened);
            verify(!isShown("More", overlay));

            keyClick(Qt.Key_Escape);
            tryVerify(() => !opener.menu.visible);
            verify(!isShown("More", overlay));
            mouseMove(stage, 5, 5);
            beneath.forceActiveFocus();
            mouseMove(opener, 10, 10);
            tryVerify(() => isShown("More", overlay));
            mouseMove(stage, 5, 5);
        }

        function popups(): int {
            return Array.from(stage.T.Overlay.overlay?.children ?? []).filter(item => item.visible).length;
        }

        function test_a_click_outside_a_popup_only_closes_it_data() {
            return [
                {tag: "list of a choice", component: comboComponent},
                {tag: "colours", component: wellComponent},
                {tag: "calendar", component: dateComponent, key: Qt.Key_F4},
                {tag: "menu", component: menuComponent, isOpen: true}
            ];
        }

        function test_a_click_outside_a_popup_only_closes_it(data) {
            beneath.clicks = 0;
            const opener = createTemporaryObject(data.component, stage);
            if (!data.isOpen) {
                opener.forceActiveFocus(Qt.TabFocusReason);
                keyClick(data.key ?? Qt.Key_Space);
            }
            tryVerify(() => popups() > 0);
            mouseClick(beneath);
            tryVerify(() => popups() === 0);
            compare(beneath.clicks, 0);
            mouseClick(beneath);
            compare(beneath.clicks, 1);
        }

        function test_a_click_on_the_colours_opener_closes_them() {
            const well = createTemporaryObject(wellComponent, stage);
            mouseClick(well);
            tryVerify(() => popups() > 0);
            mouseClick(well);
            tryVerify(() => popups() === 0);
            verify(well.activeFocus);
        }

        function test_a_ring_on_the_colours_and_back_on_the_well_is_for_keys_data() {
            return [{tag: "keys", isByKey: true}, {tag: "mouse", isByKey: false}];
        }

        function test_a_ring_on_the_colours_and_back_on_the_well_is_for_keys(data) {
            const well = createTemporaryObject(wellComponent, scope);
            well.forceActiveFocus(Qt.TabFocusReason);
            if (data.isByKey)
                keyClick(Qt.Key_Return);
            else
                mouseClick(well);
            tryVerify(() => !well.activeFocus);
            const swatch = testCase.Window.activeFocusItem;
            compare(swatch.Accessible.name, "蓝色");
            compare(swatch.background.children[0].visible, data.isByKey);
            keyClick(Qt.Key_Escape);
            tryVerify(() => well.activeFocus && popups() === 0);
            compare(well.visualFocus, data.isByKey);
        }
    }
}

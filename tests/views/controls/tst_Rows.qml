import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 400
    height: 200

    /// Gives way to a row at the first click.
    AppButton {
        id: add

        x: 20
        y: 20
        text: "Add task"
        onClicked: visible = false
    }

    TestCase {
        name: "Rows"
        when: windowShown

        Component {
            id: actionComponent

            RowAction {
                property int clicks: 0

                x: add.x
                y: add.y
                z: -1
                text: "Delete"
                onClicked: ++clicks
            }
        }

        Component {
            id: circleComponent

            CompletionCircle {
                property int clicks: 0

                x: add.x
                y: add.y
                z: -1
                onClicked: ++clicks
            }
        }

        Component {
            id: headerComponent

            DisclosureHeader {
                text: "Completed"
                onClicked: isOpen = !isOpen
            }
        }

        function cleanup() {
            add.visible = true;
            Language.isEnglish = false;
        }

        function test_a_double_click_is_not_for_the_row_that_it_brings_data() {
            return [{tag: "action", component: actionComponent}, {tag: "circle", component: circleComponent}];
        }

        function test_a_double_click_is_not_for_the_row_that_it_brings(data) {
            const row = createTemporaryObject(data.component, stage);
            mouseDoubleClickSequence(add, 10, 10);
            verify(!add.visible);
            compare(row.clicks, 0);
            mouseClick(row, 10, 10);
            compare(row.clicks, 1);
        }

        function test_a_double_click_removes_one_row_and_not_the_next() {
            add.visible = false;
            const row = createTemporaryObject(actionComponent, stage);
            mouseDoubleClickSequence(row, 10, 10);
            compare(row.clicks, 1);
        }

        function test_a_header_tells_whether_it_is_open() {
            Language.isEnglish = true;
            const header = createTemporaryObject(headerComponent, stage, {x: 100});
            compare(header.Accessible.description, "collapsed");
            mouseClick(header);
            compare(header.Accessible.description, "expanded");
            verify(!header.Accessible.checked);
            header.isVoid = true;
            compare(header.Accessible.description, "");
        }
    }
}

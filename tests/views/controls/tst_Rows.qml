import QtQuick
import QtTest
import Tessaly.Ui

Item {
    id: stage

    width: 400
    height: 200

    TestCase {
        name: "Rows"
        when: windowShown

        Component {
            id: headerComponent

            DisclosureHeader {
                text: "Completed"
                onClicked: isOpen = !isOpen
            }
        }

        function cleanup() {
            Language.isEnglish = false;
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

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui
import Tessaly.Versions

/// The generations under their headings. One stop; the arrows choose at once.
Rectangle {
    id: pane

    required property VersionsModel versions
    readonly property Item initialFocus: list

    color: Theme.inset

    ListView {
        id: list

        anchors.fill: parent
        leftMargin: 8
        rightMargin: 8
        topMargin: 8
        bottomMargin: 8
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        highlightFollowsCurrentItem: true
        highlightMoveDuration: 0
        model: pane.versions.versions
        currentIndex: pane.versions.current
        Accessible.role: Accessible.List
        Accessible.name: Language.text("历史版本", "Earlier versions")
        Keys.onUpPressed: pane.versions.current = Math.max(0, currentIndex - 1)
        Keys.onDownPressed: pane.versions.current = Math.min(count - 1, currentIndex + 1)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home)
                pane.versions.current = 0;
            else if (event.key === Qt.Key_End)
                pane.versions.current = count - 1;
            else
                return;
            event.accepted = true;
        }
        T.ScrollBar.vertical: AppScrollBar {}

        section.property: "group"

        delegate: VersionItem {
            id: item

            width: list.width - 16
            isRinged: item.isChosen && list.activeFocus && list.hasKeyFocus
            onChosen: {
                pane.versions.current = item.index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }
        }

        property bool hasKeyFocus: false
        onActiveFocusChanged: hasKeyFocus = activeFocus && FocusHandover.reasonAfter(list) !== Qt.MouseFocusReason
    }
}

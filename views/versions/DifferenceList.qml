pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui
import Tessaly.Versions

/// What restoring the chosen version would do, by area.
Item {
    id: pane

    required property VersionsModel versions

    Column {
        id: head

        width: parent.width
        spacing: 2

        AppText {
            width: parent.width
            text: pane.versions.heading
            token: Theme.heading
            isMultiline: true
            Accessible.role: Accessible.Heading
        }

        AppText {
            text: pane.versions.moment
            visible: text !== ""
            token: Theme.caption
            color: Theme.textSecondary
        }

        AppText {
            width: parent.width
            topPadding: 2
            text: pane.versions.summary
            visible: text !== ""
            token: Theme.control
            color: Theme.textSecondary
            isMultiline: true
        }
    }

    Rectangle {
        y: head.height + 12
        width: parent.width
        height: Math.min(list.contentHeight + 2, parent.height - y)
        visible: pane.versions.isCompared
        radius: Theme.popupRadius
        color: Theme.card
        border.width: 1
        border.color: Theme.border

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: 1
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: pane.versions.differences
            Accessible.role: Accessible.List
            Accessible.name: pane.versions.heading
            T.ScrollBar.vertical: AppScrollBar {}

            delegate: DifferenceItem {
                id: item

                width: list.width
                onCheckChosen: isChecked => pane.versions.setChecked(item.index, isChecked)
                onOpenChosen: pane.versions.toggleOpen(item.index)
            }
        }

        FocusWatch {
            area: list.contentItem
            onFollowed: item => list.contentY = Scrolling.placeFor(list, item, 0)
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Asks what becomes of the schedules that a sync would remove.
Rectangle {
    id: notice

    required property CalendarSyncModel sync
    readonly property alias keepButton: keepButton
    property bool isOpen: false

    implicitHeight: column.height + 24
    radius: Theme.popupRadius
    color: Theme.notice
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title.text + " " + reason.text

    Icon {
        x: 14
        y: 14
        name: "triangle-alert"
        size: 16
        color: Theme.text
    }

    Column {
        id: column

        x: 40
        y: 12
        width: parent.width - x - 14
        spacing: 4

        AppText {
            id: title

            width: parent.width
            isMultiline: true
            text: Language.text("这次同步会移除 %1 个日程。", "This sync would remove %1 schedules.").arg(notice.sync.heldCount)
            token: Theme.groupLabel
        }

        AppText {
            id: reason

            width: parent.width
            isMultiline: true
            text: notice.sync.heldReason
            token: Theme.control
            color: Theme.textSecondary
        }

        DisclosureHeader {
            x: -16
            width: parent.width + 16
            text: Language.text("查看这 %1 个日程", "Show the %1 schedules").arg(notice.sync.heldCount)
            isOpen: notice.isOpen
            onClicked: notice.isOpen = !notice.isOpen
        }

        ListView {
            id: list

            width: parent.width
            height: notice.isOpen ? Math.min(count, 6) * 26 : 0
            visible: notice.isOpen
            clip: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            model: notice.sync.held
            Accessible.role: Accessible.List
            Accessible.name: title.text
            Keys.onUpPressed: contentY = Math.max(0, contentY - 26)
            Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + 26))

            delegate: Item {
                id: row

                required property string title
                required property string date

                width: list.width
                height: 26
                Accessible.role: Accessible.ListItem
                Accessible.name: row.title + ", " + row.date

                AppText {
                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width - when.width - 12
                    text: row.title
                    token: Theme.control
                    Accessible.ignored: true
                }

                AppText {
                    id: when

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.date
                    token: Theme.caption
                    color: Theme.textSecondary
                    Accessible.ignored: true
                }
            }
        }

        Row {
            anchors.right: parent.right
            spacing: 8

            AppButton {
                isSmall: true
                kind: AppButton.Destructive
                enabled: !PlannerStore.calendarSync.isSyncing
                text: Language.text("移除", "Remove")
                onClicked: PlannerStore.calendarSync.removeHeldSchedules()
            }

            AppButton {
                id: keepButton

                isSmall: true
                isRaised: true
                enabled: !PlannerStore.calendarSync.isSyncing
                text: Language.text("保留", "Keep")
                onClicked: PlannerStore.calendarSync.keepHeldSchedules()
            }
        }
    }
}

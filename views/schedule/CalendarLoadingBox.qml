import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Shown in place of the list of calendars while it loads, or if there is no calendar service.
Rectangle {
    id: box

    implicitHeight: 108
    radius: Theme.popupRadius
    color: Theme.field
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.StaticText
    Accessible.name: loading.visible ? loading.text : noService.text

    Row {
        anchors.centerIn: parent
        spacing: 10

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: PlannerStore.calendarSync.isAvailable
        }

        AppText {
            id: loading

            visible: PlannerStore.calendarSync.isAvailable
            text: Language.text("正在读取日历…", "Loading calendars…")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        NoServiceText {
            id: noService

            Accessible.ignored: true
        }
    }
}

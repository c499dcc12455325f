import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Stands in for the list of calendars until there is one, or tells that there will be none.
Rectangle {
    id: box

    implicitHeight: 108
    radius: Theme.popupRadius
    color: Theme.field
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text

    Row {
        anchors.centerIn: parent
        spacing: 10

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: PlannerStore.hasCalendarService
        }

        AppText {
            id: label

            text: PlannerStore.hasCalendarService ? Language.text("正在读取日历…", "Loading calendars…") : Language.text("此系统没有可用的日历服务。", "No calendar service is available on this system.")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }
}

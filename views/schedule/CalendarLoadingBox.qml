import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Shown in place of the list of calendars while it loads, or says why there is none.
Rectangle {
    id: box

    readonly property CalendarSync calendars: PlannerStore.calendarSync
    readonly property bool isRefused: calendars.consent === CalendarSync.Refused
    readonly property bool isLoading: calendars.isAvailable && !isRefused && !calendars.hasLoadedCalendars

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
            visible: box.isLoading
        }

        AppText {
            id: loading

            visible: box.calendars.isAvailable
            text: {
                if (box.isRefused)
                    return Language.text("未获日历访问权限。", "Calendar access was not granted.");
                return box.isLoading ? Language.text("正在读取日历…", "Loading calendars…") : Language.text("没有日历。", "There are no calendars.");
            }
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

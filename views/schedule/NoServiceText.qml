import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Explains why the controls beside it are disabled: the system has no calendar service, or the user refused access to it.
AppText {
    /// Whether the controls need the access.
    property bool needsAccess: false
    readonly property CalendarSync calendars: PlannerStore.calendarSync

    visible: !calendars.isAvailable || (needsAccess && calendars.consent === CalendarSync.Refused)
    text: calendars.isAvailable ? Language.text("未获日历访问权限。", "Calendar access was not granted.") : Language.text("此系统没有可用的日历服务。", "No calendar service is available on this system.")
    token: Theme.control
    color: Theme.textSecondary

    ElidedTip {}
}

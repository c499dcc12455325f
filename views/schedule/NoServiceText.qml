import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Explains why the controls beside it are disabled: the planner was started without calendars, or the user refused access to it.
AppText {
    /// Whether the controls need the access.
    property bool needsAccess: false
    readonly property CalendarSync calendars: PlannerStore.calendarSync

    visible: !calendars.isAvailable || (needsAccess && calendars.consent === CalendarSync.Refused)
    text: calendars.isAvailable ? Language.text("未获日历访问权限。", "Calendar access was not granted.") : Language.text("启动 Tessaly 时关闭了日历功能。", "Calendars were turned off when Tessaly was started.")
    token: Theme.control
    color: Theme.textSecondary

    ElidedTip {}
}

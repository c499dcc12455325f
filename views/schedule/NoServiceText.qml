import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Explains why the controls beside it are disabled: the system has no calendar service.
AppText {
    visible: !PlannerStore.calendarSync.isAvailable
    text: Language.text("此系统没有可用的日历服务。", "No calendar service is available on this system.")
    token: Theme.control
    color: Theme.textSecondary

    ElidedTip {}
}

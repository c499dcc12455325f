import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Says why what stands beside it cannot be used; there is nothing to say while the system has a calendar service.
AppText {
    visible: !PlannerStore.hasCalendarService
    text: Language.text("此系统没有可用的日历服务。", "No calendar service is available on this system.")
    token: Theme.control
    color: Theme.textSecondary

    ElidedTip {}
}

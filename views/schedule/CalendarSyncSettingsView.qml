import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Automatic sync and "Sync now".
Sheet {
    id: sheet

    signal done

    title: Language.text("日历同步", "Calendar sync")
    sheetWidth: 520
    primaryButton: doneButton
    status: PlannerStore.calendarSyncMessage
    statusLine.isFailure: PlannerStore.isSyncMessageFailure
    statusLine.isPassing: PlannerStore.isSyncMessagePassing
    statusLine.isClosable: true
    statusLine.onDismissed: PlannerStore.dismissCalendarSyncMessage()
    onLeaving: sheet.done()

    head: AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("同步会将已导入日历的变化更新到 Tessaly，并将 Tessaly 新建日程写入默认 Apple 日历。", "Sync updates Tessaly with imported calendar changes and writes new Tessaly schedules to the default Apple Calendar.")
        token: Theme.control
        color: Theme.textSecondary
    }

    // The store cannot sync with the system's calendars yet.
    foot: [
        AppButton {
            enabled: false
            isRaised: true
            text: Language.text("立即同步", "Sync now")
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: Language.text("完成", "Done")
            onClicked: sheet.done()
        }
    ]

    Toggle {
        text: Language.text("自动同步 Apple Calendar", "Automatically sync Apple Calendar")
        height: 20
        enabled: !noService.visible
        Accessible.description: enabled ? "" : noService.text
        checked: PlannerStore.automaticCalendarSync
        onToggled: PlannerStore.automaticCalendarSync = checked
    }

    NoServiceText {
        id: noService

        width: parent?.width ?? 0
    }
}

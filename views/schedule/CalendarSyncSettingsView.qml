import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Automatic sync, "Sync now", what the last sync did, and the access to the system's calendars.
Sheet {
    id: sheet

    readonly property CalendarSync calendars: PlannerStore.calendarSync
    readonly property bool hasConsent: calendars.consent === CalendarSync.Allowed

    signal done
    /// The user wants to see the restore point in the file.
    signal restorePointRequested(fileName: string)

    title: Language.text("日历同步", "Calendar sync")
    sheetWidth: 520
    primaryButton: doneButton
    initialFocus: notice.visible ? notice.keepButton : doneButton
    status: PlannerStore.calendarSyncMessage
    statusLine.isFailure: PlannerStore.isSyncMessageFailure
    statusLine.isPassing: PlannerStore.isSyncMessagePassing
    statusLine.isClosable: true
    statusLine.onDismissed: PlannerStore.dismissCalendarSyncMessage()
    onLeaving: sheet.done()

    head: AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("同步会将已导入日历的变化更新到 Tessaly，并将 Tessaly 新建日程写入默认%1。", "Sync updates Tessaly with imported calendar changes and writes new Tessaly schedules to the default %1.").arg(sheet.calendars.serviceName)
        token: Theme.control
        color: Theme.textSecondary
    }

    foot: [
        AppButton {
            enabled: sheet.calendars.isAvailable && !sheet.calendars.isSyncing
            isRaised: true
            text: Language.text("立即同步", "Sync now")
            onClicked: sheet.calendars.syncWithAppleCalendar()
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: Language.text("完成", "Done")
            onClicked: sheet.done()
        }
    ]

    CalendarSyncModel {
        id: sync

        store: PlannerStore
    }

    HeldRemovalNotice {
        id: notice

        width: parent?.width ?? 0
        visible: sync.heldCount > 0
        sync: sync
    }

    Toggle {
        text: Language.text("自动同步%1", "Automatically sync %1").arg(sheet.calendars.serviceName)
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

    Column {
        id: facts

        readonly property real labelWidth: Math.max(80, access.visible ? access.neededLabelWidth : 0, last.neededLabelWidth)

        width: parent?.width ?? 0
        visible: sheet.calendars.isAvailable
        spacing: 4

        SyncFact {
            id: access

            labelWidth: facts.labelWidth
            visible: sheet.calendars.consent !== CalendarSync.NotNeeded
            label: Language.text("日历权限", "Calendar access")
            value: sheet.hasConsent ? Language.text("已允许", "Allowed") : Language.text("未允许", "Not allowed")

            RowAction {
                text: sheet.hasConsent ? Language.text("收回", "Withdraw") : Language.text("允许…", "Allow…")
                itemTitle: Language.text("日历权限", "Calendar access")
                onClicked: sheet.hasConsent ? sheet.calendars.answerConsent(false) : sheet.calendars.askForConsent()
            }
        }

        SyncFact {
            id: last

            labelWidth: facts.labelWidth
            label: Language.text("上次同步", "Last sync")
            value: sync.lastSync
        }

        SyncFact {
            labelWidth: facts.labelWidth
            visible: sync.leftOut !== ""
            label: Language.text("未包括", "Left out")
            value: sync.leftOut
        }
    }

    RestorePointBox {
        width: parent?.width ?? 0
        visible: sync.restorePointCount > 0
        sync: sync
        onChosen: fileName => sheet.restorePointRequested(fileName)
    }
}

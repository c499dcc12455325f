import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Which calendars of the system are imported, and the linked calendars.
Sheet {
    id: sheet

    readonly property bool canImport: PlannerStore.calendarSync.isAvailable && !PlannerStore.calendarSync.isSyncing

    signal done

    title: Language.text("导入日历", "Import calendars")
    sheetWidth: 580
    primaryButton: importButton
    initialFocus: doneButton
    status: PlannerStore.calendarSyncMessage
    statusLine.isFailure: PlannerStore.isSyncMessageFailure
    statusLine.isPassing: PlannerStore.isSyncMessagePassing
    statusLine.isClosable: true
    statusLine.onDismissed: PlannerStore.dismissCalendarSyncMessage()
    onLeaving: sheet.done()

    head: AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("选择要导入的账户和日历。导入不会改动%1中的现有日程。", "Choose accounts and calendars to import. Importing does not change existing %1 events.").arg(PlannerStore.calendarSync.serviceName)
        token: Theme.control
        color: Theme.textSecondary
    }

    foot: [
        AppButton {
            enabled: sheet.canImport
            isRaised: true
            text: Language.text("全部导入", "Import all")
            onClicked: PlannerStore.calendarSync.importAllCalendars()
        },
        AppButton {
            id: importButton

            anchors.right: doneButton.left
            anchors.rightMargin: 8
            enabled: sheet.canImport
            kind: AppButton.Primary
            text: Language.text("导入所选日历", "Import selected")
            onClicked: PlannerStore.calendarSync.importSelectedCalendars()
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            isRaised: true
            text: Language.text("完成", "Done")
            onClicked: sheet.done()
        }
    ]

    CalendarGroupsModel {
        id: groups

        store: PlannerStore
        purpose: CalendarGroupsModel.Import
    }

    CalendarSelectionModel {
        id: selection

        store: PlannerStore
    }

    CalendarLoadingBox {
        width: parent?.width ?? 0
        visible: groups.calendarCount === 0
    }

    CalendarChoiceBox {
        width: parent?.width ?? 0
        visible: groups.calendarCount > 0
        choices: groups.calendars
        onChosen: (row, isChosen) => groups.chooseCalendar(row, isChosen)
    }

    CalendarLinkSection {
        width: parent?.width ?? 0
        viewModel: selection
    }
}

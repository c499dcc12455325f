import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Which calendars of the system are imported, and the linked calendars, one of them in detail.
Sheet {
    id: sheet

    readonly property bool canImport: PlannerStore.calendarSync.isAvailable && !PlannerStore.calendarSync.isSyncing
    readonly property LinkDetailsModel details: selection.details
    property int shownPlace: -1

    signal done

    function showDetails(place: int) {
        shownPlace = place;
        selection.showDetails(place);
        bodyFlickable.contentY = 0;
        backButton.forceActiveFocus(FocusHandover.reasonAfter(links.Window.activeFocusItem));
    }

    /// The field for a link, and what is behind the link, are at the end.
    function scrollToEnd() {
        bodyFlickable.contentY = Math.max(0, bodyFlickable.contentHeight - bodyFlickable.height);
    }

    function leaveDetails() {
        const reason = FocusHandover.reasonAfter(links.Window.activeFocusItem);
        details.close();
        links.focusDetails(shownPlace, reason);
    }

    title: details.isOpen ? "" : Language.text("导入日历", "Import calendars")
    name: details.isOpen ? details.name : title
    sheetWidth: 620
    primaryButton: details.isOpen ? detailsDoneButton : importButton
    initialFocus: doneButton
    showsToast: true
    status: PlannerStore.calendarSyncMessage
    statusLine.isFailure: PlannerStore.isSyncMessageFailure
    statusLine.isPassing: PlannerStore.isSyncMessagePassing
    statusLine.isClosable: true
    statusLine.onDismissed: PlannerStore.dismissCalendarSyncMessage()
    onAboutToShow: selection.refresh()
    onClosed: details.close()
    onLeaving: sheet.details.isOpen ? leaveDetails() : sheet.done()

    head: [
        AppText {
            width: parent?.width ?? 0
            visible: !sheet.details.isOpen
            isMultiline: true
            text: Language.text("选择要导入的账户和日历。导入不会改动%1中的现有日程。", "Choose accounts and calendars to import. Importing does not change existing %1 events.").arg(PlannerStore.calendarSync.serviceName)
            token: Theme.control
            color: Theme.textSecondary
        },
        Row {
            x: -8
            width: (parent?.width ?? 0) + 8
            visible: sheet.details.isOpen
            spacing: 4

            IconButton {
                id: backButton

                iconName: "chevron-left"
                text: Language.text("返回", "Back")
                onClicked: sheet.leaveDetails()
            }

            AppText {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - backButton.width - 4
                text: sheet.details.name
                token: Theme.sheetTitle
                Accessible.role: Accessible.Heading

                ElidedTip {}
            }
        }
    ]

    foot: [
        AppButton {
            enabled: sheet.canImport
            visible: !sheet.details.isOpen
            isRaised: true
            text: Language.text("全部导入", "Import all")
            onClicked: PlannerStore.calendarSync.importAllCalendars()
        },
        AppButton {
            id: importButton

            anchors.right: doneButton.left
            anchors.rightMargin: 8
            enabled: sheet.canImport
            visible: !sheet.details.isOpen
            kind: AppButton.Primary
            text: Language.text("导入所选日历", "Import selected")
            onClicked: PlannerStore.calendarSync.importSelectedCalendars()
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            visible: !sheet.details.isOpen
            isRaised: true
            text: Language.text("完成", "Done")
            onClicked: sheet.done()
        },
        AppButton {
            id: updateButton

            visible: sheet.details.isOpen
            isRaised: true
            text: Language.text("更新", "Update")
            onClicked: sheet.details.update()
        },
        AppButton {
            anchors.left: updateButton.right
            anchors.leftMargin: 8
            visible: sheet.details.isOpen
            isRaised: true
            kind: AppButton.Destructive
            text: Language.text("删除", "Delete")
            onClicked: {
                sheet.details.deleteLink();
                links.focusDetails(sheet.shownPlace, Qt.OtherFocusReason);
            }
        },
        AppButton {
            id: detailsDoneButton

            anchors.right: parent?.right
            visible: sheet.details.isOpen
            kind: AppButton.Primary
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

    Shortcut {
        sequences: ["Alt+Left"]
        enabled: sheet.opened && sheet.details.isOpen
        onActivated: sheet.leaveDetails()
    }

    CalendarLoadingBox {
        width: parent?.width ?? 0
        visible: groups.calendarCount === 0 && !sheet.details.isOpen
    }

    CalendarChoiceBox {
        width: parent?.width ?? 0
        visible: groups.calendarCount > 0 && !sheet.details.isOpen
        choices: groups.calendars
        onChosen: (row, isChosen) => groups.chooseCalendar(row, isChosen)
    }

    CalendarLinkSection {
        id: links

        width: parent?.width ?? 0
        visible: !sheet.details.isOpen
        viewModel: selection
        onDetailsRequested: place => sheet.showDetails(place)
        onTrialShown: Qt.callLater(sheet.scrollToEnd) // qmllint disable
    }

    LinkDetails {
        width: parent?.width ?? 0
        visible: sheet.details.isOpen
        details: sheet.details
    }
}

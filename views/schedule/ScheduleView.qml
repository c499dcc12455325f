import QtQuick
import Tessaly.Schedule
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The schedule screen: header, week or month, list of the focus day, add form, status line, sheets.
Page {
    id: page

    /// The user wants to see the restore point in the file.
    signal restorePointRequested(fileName: string)

    isLimited: false
    status: PlannerStore.calendarSyncMessage
    statusLine.isFailure: PlannerStore.isSyncMessageFailure
    // A sheet shows it too, where it may be held.
    statusLine.isPassing: PlannerStore.isSyncMessagePassing && model.sheets.sheet === ScheduleSheetModel.None
    statusLine.isClosable: true
    statusLine.onDismissed: PlannerStore.dismissCalendarSyncMessage()
    statusLine.action: PlannerStore.calendarSync.hasHeldRemovals && !PlannerStore.isSyncMessageFailure && !PlannerStore.isSyncMessagePassing ? Language.text("打开", "Open") : ""
    statusLine.onActionChosen: model.sheets.openSyncSettings()

    ScheduleViewModel {
        id: model

        store: PlannerStore
        onAddedElsewhere: message => {
            elsewhere.message = message;
            elsewhere.show();
        }
    }

    ScheduleHeader {
        width: page.contentWidth
        viewModel: model
    }

    Loader {
        width: page.contentWidth
        sourceComponent: model.scope === ScheduleViewModel.Week ? week : month
    }

    DayList {
        id: dayList

        width: page.contentWidth
        viewModel: model
        onEmptied: form.focusTitle()
    }

    ScheduleForm {
        id: form

        width: page.contentWidth
        viewModel: model
        onAdded: page.scroll.keepInView(form)
    }

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    Component {
        id: week

        WeekTimeline {
            viewModel: model
            onTimeChosen: {
                page.scroll.glideTo(form);
                form.focusTitle();
            }
        }
    }

    Component {
        id: month

        CalendarGrid {
            viewModel: model
        }
    }

    // qmllint enable unqualified

    Toast {
        id: elsewhere

        parent: page
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24 + (page.status === "" ? 0 : Theme.statusHeight)
        action: Language.text("显示", "Show")
        onActionChosen: model.showAdded()
    }

    ScheduleSheets {
        viewModel: model
        onNoteOpenerGone: reason => dayList.focusAfterDeparture(reason)
        onRestorePointRequested: fileName => page.restorePointRequested(fileName)
    }
}

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

    /// Made when its scope is first shown and then kept, so that a change between them makes nothing.
    component Body: Loader {
        required property bool isShown

        active: false
        visible: isShown
        onIsShownChanged: {
            if (isShown)
                active = true;
        }
    }

    readonly property bool isUncovered: visible && model.sheets.sheet === ScheduleSheetModel.None && !model.sheets.isNoteOpen

    function tell(message: string, isElsewhere: bool) {
        toast.isElsewhere = isElsewhere;
        toast.message = message;
        toast.show();
    }

    /// Shows the schedule and puts the focus on it.
    function reveal(id: string) {
        const place = model.reveal(id);
        if (place >= 0)
            dayList.reveal(place);
    }

    /// A new entry is to be typed.
    function startNew() {
        form.focusTitle();
    }

    function showToday() {
        model.showToday();
    }

    function showWeek() {
        model.scope = ScheduleViewModel.Week;
    }

    function showMonth() {
        model.scope = ScheduleViewModel.Month;
    }

    function showPlan() {
        side.open();
    }

    /// The focus goes to the day.
    function takeFocus() {
        if (model.scope === ScheduleViewModel.Week)
            (weekBody.item as WeekTimeline).focusDay();
        else
            (monthBody.item as CalendarGrid).focusPlace(model.focusedPlace);
    }

    isLimited: false
    sideRoom: side.room
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
        onAddedElsewhere: message => page.tell(message, true)
        onRefused: reason => page.tell(reason, false)
        onLengthened: message => page.tell(message, false)
    }

    ScheduleHeader {
        id: header

        width: page.contentWidth
        viewModel: model
    }

    Body {
        id: weekBody

        width: page.contentWidth
        isShown: model.scope === ScheduleViewModel.Week
        sourceComponent: week
    }

    Body {
        id: monthBody

        width: page.contentWidth
        isShown: model.scope === ScheduleViewModel.Month
        sourceComponent: month
    }

    DayList {
        id: dayList

        width: page.contentWidth
        viewModel: model
        viewTop: page.scroll.contentY - Theme.pagePadding - y
        viewHeight: page.scroll.height
        onEmptied: form.focusTitle()
    }

    ScheduleForm {
        id: form

        width: page.contentWidth
        viewModel: model
        onAdded: page.scroll.keepInView(form)
    }

    Shortcut {
        enabled: page.isUncovered
        sequence: "Alt+Left"
        onActivated: model.showPrevious()
    }

    Shortcut {
        enabled: page.isUncovered
        sequence: "Alt+Right"
        onActivated: model.showNext()
    }

    Shortcut {
        enabled: page.isUncovered
        sequence: "Alt+Home"
        onActivated: model.showToday()
    }

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    Component {
        id: week

        WeekTimeline {
            id: timeline

            viewModel: model
            scroll: page.scroll
            isFormInUse: form.isInUse
            onFormRequested: form.focusTitle()
            onFormAccepted: {
                if (form.submit())
                    timeline.showAdded();
            }
        }
    }

    Component {
        id: month

        CalendarGrid {
            viewModel: model
            scroll: page.scroll
            onDayOpened: page.scroll.glideTo(dayList)
        }
    }

    // qmllint enable unqualified

    PlanSide {
        id: side

        parent: page
        anchors.fill: parent
        viewModel: model
        timeline: weekBody.item as Item
        opener: header.planButton
        isUncovered: page.isUncovered
        onRefused: reason => page.tell(reason, false)
    }

    RepaintArea {
        id: all

        parent: page
        anchors.fill: parent

        Connections {
            function onWeekTurned() {
                all.repaint();
            }
            function onScopeChanged() {
                all.repaint();
            }

            target: model
        }
    }

    Toast {
        id: toast

        property bool isElsewhere: false

        parent: page
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.horizontalCenterOffset: -side.room / 2
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24 + (page.status === "" ? 0 : Theme.statusHeight)
        action: isElsewhere ? Language.text("显示", "Show") : ""
        onActionChosen: model.showAdded()
    }

    ScheduleSheets {
        viewModel: model
        onNoteOpenerGone: reason => {
            if (model.listedCount > 0)
                dayList.focusAfterDeparture(reason);
            else
                page.takeFocus();
        }
        onRestorePointRequested: fileName => page.restorePointRequested(fileName)
    }
}

import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// The schedule screen: header, week or month, list of the focus day, add form, status line, sheets.
Item {
    id: screen

    ScheduleViewModel {
        id: model

        store: PlannerStore
    }

    ScrollPage {
        id: page

        anchors.fill: parent
        anchors.bottomMargin: status.visible ? status.height : 0
        contentHeight: column.height + 2 * Theme.pagePadding

        Column {
            id: column

            x: Theme.pagePadding
            y: Theme.pagePadding
            width: page.width - 2 * Theme.pagePadding
            spacing: Theme.pageGap

            ScheduleHeader {
                width: column.width
                viewModel: model
            }

            Loader {
                width: column.width
                sourceComponent: model.scope === ScheduleViewModel.Week ? week : month
            }

            DayList {
                width: column.width
                viewModel: model
                onEmptied: form.focusTitle()
            }

            ScheduleForm {
                id: form

                width: column.width
                viewModel: model
            }
        }
    }

    Component {
        id: week

        WeekTimeline {
            viewModel: model
        }
    }

    Component {
        id: month

        CalendarGrid {
            viewModel: model
        }
    }

    Item {
        id: status

        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.statusHeight
        visible: PlannerStore.calendarSyncMessage !== ""

        Separator {
            width: parent.width
        }

        StatusLine {
            x: Theme.pagePadding
            width: parent.width - 2 * Theme.pagePadding
            anchors.verticalCenter: parent.verticalCenter
            message: PlannerStore.calendarSyncMessage
        }
    }

    ScheduleSheets {
        viewModel: model
    }
}

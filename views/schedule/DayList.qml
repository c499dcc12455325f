pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The schedules of the focus day, each with its actions.
Card {
    id: list

    required property ScheduleViewModel viewModel

    implicitHeight: column.height + 2

    function focusAfterDeletion(row: int) {
        const next = rows.itemAt(Math.min(row, rows.count - 1)) as DayListItem;
        if (next !== null)
            next.focusDelete();
    }

    Column {
        id: column

        x: 1
        y: 1
        width: parent.width - 2

        Text {
            leftPadding: 16
            topPadding: 12
            bottomPadding: 8
            width: parent.width
            text: list.viewModel.dayListTitle
            color: Theme.text
            font: Theme.heading
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            visible: rows.count === 0
            leftPadding: 16
            topPadding: 2
            bottomPadding: 16
            text: Language.text("当天还没有日程。", "No schedules for this day.")
            color: Theme.text2
            font: Theme.body
        }

        Repeater {
            id: rows

            model: list.viewModel.dayList

            DayListItem {
                width: column.width
                
            }
        }
    }
}

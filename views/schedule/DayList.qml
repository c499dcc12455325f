pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The schedules of the focus day, each with its actions.
Card {
    id: list

    required property ScheduleViewModel viewModel

    /// The last schedule was deleted: nothing in the list can take the focus.
    signal emptied

    /// The next row's Delete takes the focus, else the previous one's.
    function focusAfterDeletion(row: int) {
        const next = rows.itemAt(Math.min(row, rows.count - 1)) as DayListItem;
        if (next !== null)
            next.focusDelete();
        else
            list.emptied();
    }

    implicitHeight: column.height + 2

    Column {
        id: column

        x: 1
        y: 1
        width: parent.width - 2

        HeadingText {
            width: parent.width
            height: token.line + topPadding + bottomPadding
            leftPadding: 16
            rightPadding: 16
            topPadding: 12
            bottomPadding: 8
            text: list.viewModel.dayListTitle
        }

        AppText {
            visible: rows.count === 0
            height: token.line + topPadding + bottomPadding
            leftPadding: 16
            topPadding: 2
            bottomPadding: 16
            text: Language.text("当天还没有日程。", "No schedules for this day.")
            color: Theme.textSecondary
        }

        Repeater {
            id: rows

            model: list.viewModel.dayList

            DayListItem {
                width: column.width
                isLast: index === rows.count - 1
                onEditRequested: list.viewModel.editListed(index)
                onDeleteRequested: {
                    const row = index;
                    list.viewModel.deleteListed(row);
                    list.focusAfterDeletion(row);
                }
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// The schedules of the focus day, each with its actions.
Card {
    id: list

    required property ScheduleViewModel viewModel
    /// Where a schedule was removed last.
    property int removedRow: 0

    /// The last schedule was removed: nothing in the list can take the focus.
    signal emptied

    /// The row after the removed one, else the previous one; null when none is left.
    function heir(): DayListItem {
        return rows.itemAt(Math.min(removedRow, rows.count - 1)) as DayListItem;
    }

    /// The schedule was deleted: another one's Delete takes the focus.
    function focusAfterDeletion(reason: int) {
        const next = heir();
        if (next !== null)
            next.focusDelete(reason);
        else
            list.emptied();
    }

    /// The schedule went elsewhere: another one's Edit takes the focus.
    function focusAfterDeparture(reason: int) {
        const next = heir();
        if (next !== null)
            next.focusEdit(reason);
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
            onItemRemoved: index => list.removedRow = index

            DayListItem {
                width: column.width
                isLast: index === rows.count - 1
                onEditRequested: list.viewModel.editListed(index)
                onDeleteRequested: {
                    const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                    list.viewModel.deleteListed(index);
                    list.focusAfterDeletion(reason);
                }
            }
        }
    }
}

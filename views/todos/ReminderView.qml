pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Store
import Tessaly.Todos
import Tessaly.Ui

/// The to-do screen: the add form, and the list as one column of rows that are created as they come into view.
Rectangle {
    id: screen

    /// Puts the focus where a deletion leads: the next row's Delete, else the previous row's, else the header.
    function focusAfterRemoval(row: int) {
        // Until then the list answers with the rows of before.
        list.forceLayout();
        for (const candidate of [row, row - 1]) {
            const item = list.itemAtIndex(candidate) as ReminderListRow;
            if (item && item.takeFocus())
                return;
        }
    }

    color: Theme.bg

    ReminderViewModel {
        id: viewModel

        store: PlannerStore
        onAdded: row => {
            const item = list.itemAtIndex(row) as ReminderListRow;
            if (item)
                item.flash();
        }
    }

    ListPage {
        id: list

        anchors.fill: parent
        model: viewModel.list

        ReminderForm {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            reminders: viewModel
        }

        delegate: ReminderListRow {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            onExpansionRequested: isOpen => viewModel.list.setExpanded(index, isOpen)
            onToggled: viewModel.toggle(index)
            onRemoved: {
                const row = index;
                viewModel.remove(row);
                screen.focusAfterRemoval(row);
            }
        }
    }
}

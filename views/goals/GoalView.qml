pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Goals
import Tessaly.Store
import Tessaly.Ui

/// The goals screen: the form, a card for each active goal, and the completed goals by category.
Rectangle {
    id: screen

    /// Puts the focus where a deletion leads: the next row, else the previous one, else the form.
    function focusAfterRemoval(row: int) {
        // Until then the list answers with the rows of before.
        list.forceLayout();
        for (const candidate of [row, row - 1]) {
            const item = list.itemAtIndex(candidate) as GoalListRow;
            if (item?.takeFocus())
                return;
        }
        form.focusTitle();
    }

    color: Theme.bg

    GoalViewModel {
        id: viewModel
        store: PlannerStore
    }

    ListPage {
        id: list

        anchors.fill: parent
        model: viewModel.rows

        GoalForm {
            id: form

            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            goals: viewModel
        }

        delegate: GoalListRow {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            goals: viewModel
            pageY: list.contentY
            onRemoved: {
                const row = index;
                viewModel.remove(goalId);
                screen.focusAfterRemoval(row);
            }
            onDragMoved: pointerY => list.driftNear(y + pointerY, y, y + height)
            onDragEnded: list.driftSpeed = 0
            onExpansionRequested: isOpen => viewModel.setExpanded(index, isOpen)
        }
    }
}

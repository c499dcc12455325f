pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Goals
import Tessaly.Store
import Tessaly.Ui

/// The goals screen: the form, a card for each active goal, and the completed goals by category.
Rectangle {
    id: screen

    readonly property alias scroll: list

    /// Puts the focus on that part of the row, or on the form's title where it cannot be.
    function handFocusTo(row: int, part: int, reason: int) {
        // Until then the list answers with the rows of before.
        list.forceLayout();
        // A header may be too far up to be there.
        if (row >= 0 && list.itemAtIndex(row) === null)
            list.positionViewAtIndex(row, ListView.Contain);
        const item = list.itemAtIndex(row) as GoalListItem;
        if (!item?.takeFocus(part, reason))
            form.focusTitle();
    }

    /// Shows the goal, subgoal or task and puts the focus on it.
    function reveal(id: string) {
        const row = viewModel.reveal(id);
        if (row < 0)
            return;
        handFocusTo(row, GoalListItem.Circle, Qt.TabFocusReason);
        const item = list.itemAtIndex(row) as GoalListItem;
        item?.flash();
        item?.focusPart(id);
    }

    /// A new entry is to be typed.
    function startNew() {
        form.focusTitle();
    }

    color: Theme.bg

    GoalViewModel {
        id: viewModel
        store: PlannerStore
        onRestored: row => {
            // Until then the list answers with the rows of before.
            list.forceLayout();
            (list.itemAtIndex(row) as GoalListItem)?.flash();
        }
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

        delegate: GoalListItem {
            width: list.width
            page: list
            goals: viewModel
            onToggled: {
                const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                screen.handFocusTo(viewModel.toggle(goalId), GoalListItem.Circle, reason);
            }
            onRemoved: {
                const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                screen.handFocusTo(viewModel.remove(goalId), GoalListItem.Delete, reason);
            }
            onExpansionRequested: isOpen => viewModel.setExpanded(index, isOpen)
        }
    }
}

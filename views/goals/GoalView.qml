pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Goals
import Tessaly.Store
import Tessaly.Ui

/// The goals screen: the form, a card for each active goal, and the completed goals by category.
Rectangle {
    id: screen

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
            onRemoved: viewModel.remove(goalId)
            onExpansionRequested: isOpen => viewModel.setExpanded(index, isOpen)
        }
    }
}

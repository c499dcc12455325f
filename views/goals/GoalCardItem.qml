import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// A row of a goal's card: a subgoal, a task, or where a task is added.
GoalRowBase {
    id: cardRow

    /// Focuses the row's Delete, or the field of a row where a task is added.
    function takeFocus(reason: int) {
        if (part === GoalRow.AddTask)
            (loader.item as GoalAddTaskRow).takeFocus();
        else
            (loader.item as GoalItemRow).focusDelete(reason);
    }

    function focusCircle(reason: int) {
        (loader.item as GoalItemRow).focusCircle(reason);
    }

    height: part === GoalRow.Subgoal ? 67 : part === GoalRow.Task ? 34 : 48

    Separator {
        x: 1
        width: parent.width - 2
        visible: cardRow.part === GoalRow.Subgoal
    }

    Loader {
        id: loader

        width: cardRow.width
        height: cardRow.height
        sourceComponent: cardRow.part === GoalRow.AddTask ? addTask : item
    }

    // qmllint disable unqualified
    Component {
        id: item

        GoalItemRow {
            row: cardRow
        }
    }
    Component {
        id: addTask

        GoalAddTaskRow {
            row: cardRow
        }
    }
    // qmllint enable unqualified
}

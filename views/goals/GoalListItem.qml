import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// A row of the goals screen: the card of an active goal, or a part of the card of the completed ones.
Item {
    id: row

    enum Part { Circle, Delete }

    required property int index
    required property int kind
    required property string label
    required property string goalId
    required property bool isExpanded
    required property bool isEmpty
    required property bool isLast
    required property ListPage page
    required property GoalViewModel goals

    readonly property bool isGoal: kind === GoalRow.ActiveGoal || kind === GoalRow.CompletedGoal
    readonly property bool beginsCard: kind === GoalRow.ActiveGoal || kind === GoalRow.Completed
    readonly property int gap: beginsCard && index > 0 ? Theme.pageGap : 0

    signal toggled
    signal removed
    signal expansionRequested(bool isOpen)

    /// Focuses that part of the goal's card, or the header; false when it cannot be focused.
    function takeFocus(part: int, reason: int): bool {
        const item = content.item as Item;
        if (!item?.enabled)
            return false;
        if (!isGoal)
            item.forceActiveFocus(reason);
        else if (part === GoalListItem.Circle)
            (item as GoalCard).focusCircle(reason);
        else
            (item as GoalCard).focusDelete(reason);
        return true;
    }

    /// Focuses the subgoal or task, if the card has it.
    function focusPart(id: string) {
        (content.item as GoalCard)?.focusPart(id);
    }

    function flash() {
        slice.flash();
    }

    height: gap + content.height

    CardSlice {
        id: slice

        x: row.page.columnX
        y: row.gap
        width: row.page.columnWidth
        height: content.height
        isFirst: row.beginsCard
        isLast: row.kind === GoalRow.ActiveGoal || row.isLast
    }

    Loader {
        id: content

        x: row.page.columnX
        y: row.gap
        width: row.page.columnWidth
        sourceComponent: row.isGoal ? card : header
    }

    Separator {
        x: row.page.columnX + (row.isGoal ? 1 : 47)
        y: row.gap
        width: row.page.columnX + row.page.columnWidth - 1 - x
        visible: !row.beginsCard
    }

    // qmllint disable unqualified
    Component {
        id: header

        DisclosureHeader {
            leftPadding: isNested ? 47 : 17
            text: row.kind === GoalRow.Completed ? Language.text("已完成", "Completed") : row.label
            isOpen: row.isExpanded
            isNested: row.kind === GoalRow.Category
            isVoid: row.isEmpty
            onClicked: row.expansionRequested(!row.isExpanded)
        }
    }

    Component {
        id: card

        GoalCard {
            card: row.goals.card(row.goalId)
            page: row.page
            onToggled: row.toggled()
            onDeleteRequested: row.removed()
        }
    }
    // qmllint enable unqualified
}

import QtQuick
import Tessaly.Todos
import Tessaly.Ui

/// A row of the to-do list: the header of a group, or a to-do. Each draws its part of the card that it stands in.
Item {
    id: row

    enum Part { Circle, Delete }

    required property int index
    required property int kind
    required property string label
    required property bool isExpanded
    required property bool isEmpty
    required property bool isNested
    required property bool isLast
    required property string title
    required property string requirement
    required property string dueText
    required property string repeatText
    required property bool isComplete
    required property real columnX
    required property real columnWidth

    readonly property bool isReminder: kind === ReminderRowKind.Reminder
    readonly property bool beginsCard: kind === ReminderRowKind.NoDueDate || kind === ReminderRowKind.Completed
    readonly property int gap: kind === ReminderRowKind.Completed ? Theme.pageGap : 0
    readonly property string groupText: {
        switch (kind) {
        case ReminderRowKind.NoDueDate:
            return Language.text("无截止时间", "No due date");
        case ReminderRowKind.DueDates:
            return Language.text("有截止时间", "Due dates");
        case ReminderRowKind.Completed:
            return Language.text("已完成", "Completed");
        default:
            return label;
        }
    }

    signal expansionRequested(bool isOpen)
    signal toggled
    signal removed

    /// Focuses that part of the row, or the header; false when it cannot be focused.
    function takeFocus(part: int, reason: int): bool {
        const item = content.item as Item;
        if (!item?.enabled)
            return false;
        if (!isReminder)
            item.forceActiveFocus(reason);
        else if (part === ReminderListItem.Circle)
            (item as ReminderRow).focusCircle(reason);
        else
            (item as ReminderRow).focusDelete(reason);
        return true;
    }

    function flash() {
        slice.flash();
    }

    height: gap + content.height

    CardSlice {
        id: slice

        x: row.columnX
        y: row.gap
        width: row.columnWidth
        height: content.height
        isFirst: row.beginsCard
        isLast: row.isLast
    }

    Loader {
        id: content

        x: row.columnX
        y: row.gap
        width: row.columnWidth
        sourceComponent: row.isReminder ? reminder : header
    }

    Separator {
        x: row.columnX + (row.kind === ReminderRowKind.DueDates ? 1 : row.isReminder && row.isNested ? 77 : 47)
        y: row.gap
        width: row.columnX + row.columnWidth - 1 - x
        visible: !row.beginsCard
    }

    // qmllint disable unqualified
    Component {
        id: header

        DisclosureHeader {
            leftPadding: isNested ? 47 : 17
            text: row.groupText
            isOpen: row.isExpanded
            isNested: row.isNested
            isVoid: row.isEmpty
            onClicked: row.expansionRequested(!row.isExpanded)
        }
    }

    Component {
        id: reminder

        ReminderRow {
            title: row.title
            requirement: row.requirement
            dueText: row.dueText
            repeatText: row.repeatText
            isComplete: row.isComplete
            isNested: row.isNested
            isLast: row.isLast
            onToggled: row.toggled()
            onRemoved: row.removed()
        }
    }
    // qmllint enable unqualified
}

import QtQuick
import Tessaly.Todos
import Tessaly.Ui

/// A row of the to-do list: the header of a group, or a to-do. Each draws its part of the card that it stands in.
Item {
    id: row

    enum Part { Circle, Delete, Edit }

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
    required property bool isOverdue
    required property bool isEditing
    required property int count
    required property int overdueCount
    required property ReminderEditor editor
    required property real columnX
    required property real columnWidth

    /// How far the page has scrolled since the row began to be dragged.
    property real scrolledBy: 0
    /// What is dragged would land here.
    property bool isTarget: false

    readonly property bool isDragged: drag.active && !drag.isCancelled
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
    signal editRequested
    signal editingFinished(bool isSaved)
    signal editingLeft
    signal movedByWeeks(int weeks)
    signal dragStarted
    /// `y` is the pointer's place in the row.
    signal draggedTo(real y)
    signal dragEnded(bool isCancelled)

    /// Focuses that part of the row, or the header; false when it cannot be focused.
    function takeFocus(part: int, reason: int): bool {
        const item = content.item as Item;
        if (!item?.enabled)
            return false;
        if (!isReminder)
            item.forceActiveFocus(reason);
        else if (part === ReminderListItem.Circle)
            (item as ReminderRow).focusCircle(reason);
        else if (part === ReminderListItem.Edit)
            (item as ReminderRow).focusEdit(reason);
        else
            (item as ReminderRow).focusDelete(reason);
        return true;
    }

    function focusEditor() {
        (content.item as ReminderRow)?.focusEditor();
    }

    function cancelDrag() {
        drag.isCancelled = true;
        dragEnded(true);
    }

    function reportPlace() {
        draggedTo(drag.centroid.pressPosition.y + drag.offset + scrolledBy);
    }

    function flash() {
        slice.flash();
    }

    height: gap + content.height
    Component.onDestruction: {
        if (isDragged)
            dragEnded(true);
    }
    onScrolledByChanged: {
        if (isDragged)
            reportPlace();
    }

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
        x: row.columnX + (row.isDragged ? 8 : 1)
        y: content.y + (row.isDragged ? 0 : 1)
        width: row.columnWidth - 2 * (row.isDragged ? 8 : 1)
        height: content.height - (row.isDragged ? 0 : row.isLast ? 2 : 1)
        active: row.isDragged || row.isTarget
        sourceComponent: row.isDragged ? draggedGround : targetGround
    }

    DragHandler {
        id: drag

        property real offset: 0
        // A handler keeps the pointer until it is released.
        property bool isCancelled: false

        enabled: (content.item as ReminderRow)?.isMovable ?? false
        target: null
        xAxis.enabled: false
        dragThreshold: 6
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        onActiveChanged: {
            if (active) {
                // The handler counts from the next event on.
                offset = centroid.scenePosition.y - centroid.scenePressPosition.y;
                row.dragStarted();
                row.reportPlace();
            }
        }
        onGrabChanged: transition => {
            if (transition !== PointerDevice.UngrabExclusive)
                return;
            if (!isCancelled)
                row.dragEnded(false);
            isCancelled = false;
        }
        // Something else has taken the pointer.
        onCanceled: {
            row.dragEnded(true);
            isCancelled = false;
        }
        onActiveTranslationChanged: {
            if (!row.isDragged)
                return;
            offset = activeTranslation.y;
            row.reportPlace();
        }
    }

    Loader {
        id: content

        x: row.columnX
        y: row.gap + (row.isDragged ? drag.offset + row.scrolledBy : 0)
        width: row.columnWidth
        opacity: row.isDragged ? Theme.draggedOpacity : 1
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
        id: draggedGround

        PopupFrame {}
    }

    Component {
        id: targetGround

        Rectangle {
            radius: row.isLast ? Theme.cardRadius - 1 : 0
            color: Theme.accentSoft
            border.width: 2
            border.color: Theme.accent
        }
    }

    Component {
        id: header

        DisclosureHeader {
            leftPadding: isNested ? 47 : 17
            text: row.groupText
            isOpen: row.isExpanded
            isNested: row.isNested
            isVoid: row.isEmpty
            note: row.count > 0 ? row.count : ""
            alarm: row.overdueCount > 0 ? Language.text("%1 项过期", "%1 overdue").arg(row.overdueCount) : ""
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
            isOverdue: row.isOverdue
            isEditing: row.isEditing
            isDragged: row.isDragged
            editor: row.editor
            onToggled: row.toggled()
            onRemoved: row.removed()
            onEditRequested: row.editRequested()
            onFinished: isSaved => row.editingFinished(isSaved)
            onDeparted: row.editingLeft()
            onMoved: weeks => row.movedByWeeks(weeks)
        }
    }
    // qmllint enable unqualified
}

import QtQuick
import Tessaly.Todos
import Tessaly.Ui

/// One to-do, or its fields while it is edited.
Item {
    id: row

    required property string title
    required property string requirement
    required property string dueText
    required property string repeatText
    required property bool isComplete
    required property bool isNested
    required property bool isLast
    required property bool isOverdue
    required property bool isEditing
    required property ReminderEditor editor
    property bool isDragged: false

    readonly property bool isActive: hover.hovered || circle.visualFocus || actions.hasVisualFocus
    readonly property int textX: isNested ? 77 : 47
    readonly property bool isMovable: !isComplete && !isEditing

    signal toggled
    signal removed
    signal editRequested
    signal finished(bool isSaved)
    /// The focus has gone elsewhere while the row was edited.
    signal departed
    /// By so many weeks.
    signal moved(int weeks)

    function focusCircle(reason: int) {
        circle.forceActiveFocus(reason);
    }

    function focusEdit(reason: int) {
        actions.focusEdit(reason);
    }

    function focusDelete(reason: int) {
        actions.focusDelete(reason);
    }

    function focusEditor() {
        (fields.item as ReminderRowEditor)?.takeFocus();
    }

    function finish() {
        if ((fields.item as ReminderRowEditor).accept())
            finished(true);
    }

    Keys.onEscapePressed: event => {
        event.accepted = row.isEditing;
        if (row.isEditing)
            row.finished(false);
    }
    Keys.onUpPressed: event => row.press(event, -1)
    Keys.onDownPressed: event => row.press(event, 1)

    function press(event: KeyEvent, weeks: int) {
        event.accepted = row.isMovable && event.modifiers === Qt.ControlModifier;
        if (event.accepted)
            row.moved(weeks);
    }

    implicitHeight: isEditing ? 19 + fields.height : 22 + titleText.height + (requirementText.visible ? requirementText.height : 0)

    HoverHandler {
        id: hover
    }

    ReminderLeaveWatch {
        area: row
        isOn: row.isEditing && !((fields.item as ReminderRowEditor)?.isPopupShown ?? false)
        onDeparted: row.departed()
    }

    Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - (row.isLast ? 2 : 1)
        radius: row.isLast ? Theme.cardRadius - 1 : 0
        color: Theme.hover
        visible: row.isActive && !row.isEditing && !row.isDragged
    }
    CompletionCircle {
        id: circle

        x: row.textX - 35
        y: row.isEditing ? 7 : 8
        isComplete: row.isComplete
        itemTitle: row.title
        Accessible.description: !row.isMovable ? "" : row.dueText === "" ? Language.text("Ctrl+↓ 设为本周截止", "Ctrl+↓ makes it due this week") : Language.text("Ctrl+↑ 移到上一周，Ctrl+↓ 移到下一周", "Ctrl+↑ moves it to the previous week, Ctrl+↓ to the next")
        onClicked: row.toggled()
    }

    AppText {
        id: titleText

        x: row.textX
        y: 11
        width: due.x - x - 12
        visible: !row.isEditing
        text: row.title
        token: row.isComplete ? Theme.body : Theme.rowTitle
        color: row.isComplete ? Theme.textTertiary : Theme.text
        font.strikeout: row.isComplete
        Accessible.ignored: true

        ElidedTip {}

        TapHandler {
            onDoubleTapped: row.editRequested()
        }
    }
    AppText {
        id: requirementText

        x: row.textX
        y: titleText.y + titleText.height
        width: titleText.width
        visible: row.requirement !== "" && !row.isEditing
        text: row.requirement
        token: Theme.control
        isMultiline: true
        maximumLineCount: 3
        color: Theme.textSecondary

        ElidedTip {}
    }

    Row {
        id: due

        x: actions.x - width - (row.dueText === "" ? 0 : 9)
        y: titleText.y + (titleText.height - height) / 2
        visible: !row.isEditing

        AppText {
            visible: text !== ""
            text: row.repeatText === "" ? "" : row.repeatText + " · "
            token: Theme.caption
            color: Theme.textSecondary
        }
        AppText {
            visible: text !== ""
            text: row.dueText
            token: Theme.caption
            color: row.isOverdue ? Theme.destructive : Theme.textSecondary
            Accessible.name: row.isOverdue ? text + Language.text("，已过期", ", overdue") : text
        }
    }

    Loader {
        id: fields

        x: row.textX
        y: 7
        width: actions.x - 9 - x
        active: row.isEditing
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: ReminderRowEditor {
            editor: row.editor
            onFinished: row.finish()
        }
        // qmllint enable unqualified
    }

    RowActions {
        id: actions

        x: row.width - width - 9
        y: row.isEditing ? 7 + (Theme.smallControlHeight - height) / 2 : titleText.y + (titleText.height - height) / 2
        editColumn: Language.isEnglish ? 48 : 40
        deleteColumn: Language.isEnglish ? 54 : 40
        itemTitle: row.title
        isRowActive: row.isActive
        isEditing: row.isEditing
        onEditRequested: {
            if (row.isEditing)
                row.finish();
            else
                row.editRequested();
        }
        onDeleteRequested: row.removed()
    }
}

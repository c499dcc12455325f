import QtQuick
import Tessaly.Ui

/// One to-do.
Item {
    id: row

    required property string title
    required property string requirement
    required property string dueText
    required property string repeatText
    required property bool isComplete
    required property bool isNested
    required property bool isLast

    readonly property bool isActive: hover.hovered || circle.visualFocus || deleteAction.visualFocus
    readonly property int textX: isNested ? 77 : 47

    signal toggled
    signal removed

    function focusCircle(reason: int) {
        circle.forceActiveFocus(reason);
    }

    function focusDelete(reason: int) {
        deleteAction.forceActiveFocus(reason);
    }

    implicitHeight: 22 + titleText.height + (requirementText.visible ? requirementText.height : 0)

    HoverHandler {
        id: hover
    }

    Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - (row.isLast ? 2 : 1)
        radius: row.isLast ? Theme.cardRadius - 1 : 0
        color: Theme.hover
        visible: row.isActive
    }
    CompletionCircle {
        id: circle

        x: row.textX - 35
        y: 8
        isComplete: row.isComplete
        itemTitle: row.title
        onClicked: row.toggled()
    }

    AppText {
        id: titleText

        x: row.textX
        y: 11
        width: dueLabel.x - x - 12
        text: row.title
        token: row.isComplete ? Theme.body : Theme.rowTitle
        color: row.isComplete ? Theme.textTertiary : Theme.text
        font.strikeout: row.isComplete
        Accessible.ignored: true

        ElidedTip {}
    }
    AppText {
        id: requirementText

        x: row.textX
        y: titleText.y + titleText.height
        width: titleText.width
        visible: row.requirement !== ""
        text: row.requirement
        token: Theme.control
        isMultiline: true
        maximumLineCount: 3
        color: Theme.textSecondary

        ElidedTip {}
    }

    AppText {
        id: dueLabel

        x: deleteAction.x - width - (text === "" ? 0 : 12)
        y: titleText.y + (titleText.height - height) / 2
        text: row.repeatText === "" ? row.dueText : row.repeatText + " · " + row.dueText
        token: Theme.caption
        color: Theme.textSecondary
    }
    RowAction {
        id: deleteAction

        x: row.width - width - 9
        y: titleText.y + (titleText.height - height) / 2
        text: Language.text("删除", "Delete")
        itemTitle: row.title
        isDestructive: true
        isRowActive: row.isActive
        onClicked: row.removed()
    }
}

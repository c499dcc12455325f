import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// The head of a goal's card: what it is, how far it is, and what can be done with it.
Item {
    id: header

    required property GoalCardModel card

    readonly property bool isActive: hover.hovered || circle.visualFocus
    readonly property real middle: card.isEditing ? 52 : 45

    signal toggled
    signal deleteRequested

    function focusCircle(reason: int) {
        circle.forceActiveFocus(reason);
    }

    function endEditing() {
        rail.focusEdit(Qt.TabFocusReason);
        card.toggleEditing();
    }

    function focusDelete(reason: int) {
        rail.focusDelete(reason);
    }

    Keys.onEscapePressed: event => {
        event.accepted = card.isEditing;
        if (card.isEditing)
            endEditing();
    }
    height: card.isEditing ? 50 + editor.height : 72 + (notes.height > 0 ? notes.height : 0)

    HoverHandler {
        id: hover
    }

    CompletionCircle {
        id: circle

        x: 13
        y: header.middle - 14
        size: 20
        isComplete: header.card.isComplete
        itemTitle: header.card.title
        onClicked: header.toggled()
    }

    AppText {
        x: 49
        y: 14
        width: track.x - x - 12
        text: Language.text("总目标", "Main goal") + (header.card.details.category === "" ? "" : " · " + header.card.details.category)
        token: Theme.caption
        color: Theme.textSecondary
    }
    AppText {
        x: 49
        y: 32
        width: track.x - x - 12
        visible: !header.card.isEditing
        text: header.card.title
        token: Theme.headline

        ElidedTip {}
    }
    Loader {
        id: editor

        x: 49
        y: 36
        width: parent.width - 68
        active: header.card.isEditing
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: GoalHeaderEditor {
            card: header.card
            titleWidth: track.x - 61
            onFinished: header.endEditing()
        }
        // qmllint enable unqualified
    }
    Column {
        id: notes

        x: 49
        y: 58
        width: track.x - x - 12
        visible: !header.card.isEditing

        AppText {
            width: parent.width
            visible: text !== ""
            text: header.card.details.summary
            token: Theme.control
            isMultiline: true
            maximumLineCount: 3
            bottomPadding: 2
            color: Theme.textSecondary

            ElidedTip {}
        }
        AppText {
            width: parent.width
            visible: text !== ""
            text: header.card.dueText
            token: Theme.caption
            color: Theme.textSecondary
        }
        AppText {
            width: parent.width
            visible: text !== ""
            text: header.card.details.forecast
            token: Theme.caption
            isMultiline: true
            color: Theme.textSecondary
        }
    }

    ProgressTrack {
        id: track

        x: percentage.x - 6 - width
        y: header.middle - 2
        value: header.card.progress
        itemTitle: header.card.title
        Accessible.description: percentage.text
    }
    GoalPercentage {
        id: percentage

        x: rail.x - 8 - width
        y: header.middle - height / 2
        card: header.card
    }

    GoalRail {
        id: rail

        y: header.middle - height / 2
        itemTitle: header.card.title
        isRowActive: header.isActive
        isEditing: header.card.isEditing
        onEditRequested: {
            header.card.toggleEditing();
            if (header.card.isEditing)
                (editor.item as GoalHeaderEditor).takeFocus();
        }
        onDeleteRequested: header.deleteRequested()
    }
}

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
    height: (card.isEditing ? 88 : 72) + (card.dueText === "" ? 0 : 18)

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
        text: Language.text("总目标", "Main goal")
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
        width: Math.min(420, track.x - x - 12)
        active: header.card.isEditing
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: AppTextField {
            Accessible.name: Language.text("总目标", "Main goal")
            font.pixelSize: Theme.heading.size
            font.weight: Theme.heading.weight
            text: header.card.title
            onTextEdited: header.card.title = text
            onAccepted: header.endEditing()
        }
        // qmllint enable unqualified
    }
    AppText {
        x: 49
        y: header.card.isEditing ? 74 : 58
        visible: text !== ""
        width: track.x - x - 12
        text: header.card.dueText
        token: Theme.caption
        color: Theme.textSecondary
    }

    ProgressTrack {
        id: track

        x: percentage.x - 10 - width
        y: header.middle - 2
        value: header.card.progress
        itemTitle: header.card.title
        Accessible.description: percentage.text
    }
    AppText {
        id: percentage

        x: rail.x - 12 - width
        y: header.middle - 13
        width: 48
        text: header.card.percentageText
        token: Theme.headline
        horizontalAlignment: Text.AlignRight
        Accessible.description: header.card.explanation

        HoverHandler {
            id: percentageHover
        }
        AppToolTip {
            visible: percentageHover.hovered && text !== ""
            text: header.card.explanation
        }
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
                (editor.item as Item).forceActiveFocus();
        }
        onDeleteRequested: header.deleteRequested()
    }
}

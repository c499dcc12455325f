import QtQuick
import Tessaly.Goals
import Tessaly.Ui

/// How far a goal is; where that comes from its tasks, a button that opens how it adds up.
Item {
    id: percentage

    required property GoalCardModel card

    readonly property string text: card.percentageText
    readonly property bool hasSum: card.explanation !== ""

    implicitWidth: 56
    implicitHeight: 28

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 4
        visible: !percentage.hasSum
        text: percentage.text
        token: Theme.headline
        horizontalAlignment: Text.AlignRight
    }

    PushButton {
        id: button

        objectName: "goalPercentage"
        anchors.right: parent.right
        width: Math.ceil(contentItem.implicitWidth)
        height: parent.height
        visible: percentage.hasSum
        text: percentage.text
        Accessible.name: text + ", " + percentage.card.title
        Accessible.description: tip.text
        onClicked: {
            shares.active = true;
            (shares.item as GoalShares).open();
        }

        background: Rectangle {
            radius: Theme.actionRadius
            color: shares.active ? Theme.pressed : button.hovered ? Theme.hover : Theme.transparent

            FocusRing {
                visible: button.visualFocus
                gap: 0
                targetRadius: Theme.actionRadius
            }
        }

        contentItem: AppText {
            text: button.text
            token: Theme.headline
            leftPadding: 4
            rightPadding: 4
            Accessible.ignored: true
        }

        AppToolTip {
            id: tip

            visible: button.hovered && !shares.active
            text: Language.text("显示进度如何得出", "Show how it adds up")
        }
    }

    Loader {
        id: shares

        active: false
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: GoalShares {
            parent: button
            card: percentage.card
            x: button.width - width
            restY: button.height + 4
            onClosed: shares.active = false
        }
        // qmllint enable unqualified
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Goals
import Tessaly.Ui

/// How a goal's percentage adds up: each task with its weight and its share.
RisingPopup {
    id: popup

    required property GoalCardModel card

    property T.Control opener: null
    property int openerReason: Qt.MouseFocusReason

    name: Language.text("进度如何得出", "How it adds up") + ", " + card.title
    width: 400
    implicitHeight: contentItem.implicitHeight + 24
    padding: 12
    margins: 6
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: {
        opener = parent?.Window.activeFocusItem as T.Control;
        openerReason = FocusHandover.reasonAfter(opener);
        list.forceActiveFocus();
    }
    onAboutToHide: FocusHandover.give(opener, openerReason)

    contentItem: Column {
        spacing: 8

        HeadingText {
            x: 4
            width: parent.width - 8
            text: Language.text("进度如何得出", "How it adds up")
        }

        ListView {
            id: list

            width: parent.width
            height: Math.min(contentHeight, 10 * 30)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: true
            currentIndex: 0
            model: popup.card.details.shares
            Accessible.role: Accessible.List
            Accessible.name: popup.name
            T.ScrollBar.vertical: AppScrollBar {}

            delegate: Item {
                id: share

                required property string title
                required property string weightText
                required property string percentText
                required property bool isDone

                readonly property string weight: Language.text("权重", "Weight") + " " + weightText

                width: list.width
                height: 30
                Accessible.role: Accessible.ListItem
                Accessible.name: title + ", " + weight + ", " + percentText + ", " + (isDone ? Language.text("已完成", "done") : Language.text("未完成", "open"))

                Icon {
                    x: 4
                    anchors.verticalCenter: parent.verticalCenter
                    size: 16
                    stroke: share.isDone ? 2 : 1.75
                    name: share.isDone ? "circle-check-fill" : "circle"
                    color: share.isDone ? Theme.success : Theme.textTertiary
                }
                AppText {
                    x: 30
                    anchors.verticalCenter: parent.verticalCenter
                    width: weightLabel.x - x - 12
                    text: share.title
                    token: Theme.control
                    color: share.isDone ? Theme.textSecondary : Theme.text
                    Accessible.ignored: true

                    ElidedTip {}
                }
                AppText {
                    id: weightLabel

                    x: parent.width - 64 - width
                    anchors.verticalCenter: parent.verticalCenter
                    text: share.weight
                    token: Theme.caption
                    color: Theme.textSecondary
                    Accessible.ignored: true
                }
                AppText {
                    x: parent.width - width - 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: share.percentText
                    token: Theme.button
                    color: share.isDone ? Theme.text : Theme.textSecondary
                    Accessible.ignored: true
                }
            }
        }

        Separator {
            width: parent.width
        }

        AppText {
            x: 4
            width: parent.width - 16
            horizontalAlignment: Text.AlignRight
            text: popup.card.details.sumText
            token: Theme.button
        }

        AppText {
            x: 4
            width: parent.width - 16
            visible: text !== ""
            isMultiline: true
            text: popup.card.details.forecast
            token: Theme.caption
            color: Theme.textSecondary
        }
    }
}

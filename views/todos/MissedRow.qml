import QtQuick
import Tessaly.Ui

/// One unanswered reminder.
Item {
    id: row

    required property int index
    required property string title
    required property string dueText
    required property string tomorrowTime

    signal completed(int reason)
    signal tenMinutesChosen(int reason)
    signal oneHourChosen(int reason)
    signal tomorrowChosen(int reason)

    function takeFocus(reason: int) {
        doneButton.forceActiveFocus(reason);
    }

    Separator {
        x: row.index === 0 ? 1 : 47
        width: parent.width - x - 1
    }

    AppText {
        id: titleText

        x: 46
        y: 12
        width: dueLabel.x - x - 12
        text: row.title
        token: Theme.body

        ElidedTip {}
    }

    AppText {
        id: dueLabel

        x: doneButton.x - width - 16
        y: 14
        text: row.dueText
        token: Theme.caption
        color: Theme.destructive
    }

    AppButton {
        id: doneButton

        x: snoozeButton.x - width - 8
        y: 9
        isSmall: true
        leftPadding: 10
        implicitWidth: implicitContentWidth + 2 * leftPadding
        text: Language.text("完成", "Done")
        Accessible.name: text + ", " + row.title
        onClicked: row.completed(FocusHandover.reasonAfter(doneButton))

        PressGuard {
            anchors.fill: parent
        }
    }

    AppButton {
        id: snoozeButton

        x: row.width - width - 9
        y: 9
        isSmall: true
        isMenu: true
        leftPadding: 10
        text: Language.text("稍后提醒", "Snooze")
        Accessible.name: text + ", " + row.title
        down: pressed || menu.visible
        onClicked: menu.popup(snoozeButton, snoozeButton.width - menu.width, snoozeButton.height + 4)

        AppMenu {
            id: menu

            title: snoozeButton.Accessible.name
            implicitWidth: 194

            AppMenuItem {
                text: Language.text("10 分钟后", "In 10 minutes")
                onTriggered: row.tenMinutesChosen(menu.openerReason)
            }
            AppMenuItem {
                text: Language.text("1 小时后", "In 1 hour")
                onTriggered: row.oneHourChosen(menu.openerReason)
            }
            AppMenuItem {
                text: Language.text("明天", "Tomorrow")
                keys: row.tomorrowTime
                onTriggered: row.tomorrowChosen(menu.openerReason)
            }
        }
    }
}

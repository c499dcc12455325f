pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Todos
import Tessaly.Ui

/// The reminders that wait for an answer.
Card {
    id: card

    required property MissedReminders reminders

    readonly property int rowHeight: 45
    readonly property string title: reminders.wasClosed ? Language.text("错过的提醒", "Missed reminders") : Language.text("等待处理的提醒", "Reminders waiting for you")

    /// No reminder is left, and the focus was here.
    signal finished

    /// Focuses the first button of that row.
    function handFocusTo(row: int, reason: int) {
        const next = rows.itemAt(row) as MissedRow;
        if (next)
            next.takeFocus(reason);
        else
            finished();
    }

    height: foot.y + (card.reminders.hiddenCount > 0 ? 45 : 1)
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Icon {
        x: 18
        y: 15
        name: "bell"
        size: 16
        color: Theme.textSecondary
    }

    AppText {
        id: titleText

        x: 47
        y: 12
        text: card.title
        token: Theme.heading
    }

    AppText {
        x: titleText.x + titleText.width + 12
        y: 14
        width: dismissAction.x - x - 8
        visible: card.reminders.wasClosed
        text: Language.text("Tessaly 未运行时到期", "Due while Tessaly was closed")
        token: Theme.caption
        color: Theme.textSecondary
    }

    RowAction {
        id: dismissAction

        x: parent.width - width - 9
        y: 9
        text: Language.text("全部忽略", "Dismiss all")
        isRowActive: true
        onClicked: {
            card.reminders.dismissAll();
            card.finished();
        }
    }

    Repeater {
        id: rows

        model: card.reminders.rows

        delegate: MissedRow {
            y: 45 + index * card.rowHeight
            width: card.width
            height: card.rowHeight
            tomorrowTime: card.reminders.tomorrowTime
            onCompleted: reason => card.handFocusTo(card.reminders.complete(index), reason)
            onTenMinutesChosen: reason => card.handFocusTo(card.reminders.remindInTenMinutes(index), reason)
            onOneHourChosen: reason => card.handFocusTo(card.reminders.remindInOneHour(index), reason)
            onTomorrowChosen: reason => card.handFocusTo(card.reminders.remindTomorrow(index), reason)
        }
    }

    Item {
        id: foot

        y: 45 + rows.count * card.rowHeight
        width: parent.width
        height: 44
        visible: card.reminders.hiddenCount > 0

        Separator {
            x: 47
            width: parent.width - x - 1
        }

        RowAction {
            id: moreAction

            x: 39
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("还有 %1 个", "%1 more").arg(card.reminders.hiddenCount)
            isRowActive: true
            onClicked: {
                const first = rows.count;
                const reason = FocusHandover.reasonAfter(moreAction);
                card.reminders.showAll();
                card.handFocusTo(first, reason);
            }
        }
    }
}

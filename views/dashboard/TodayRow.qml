import QtQuick
import Tessaly.Ui

/// One entry of the day.
Item {
    id: row

    required property int index
    required property int section
    required property string itemId
    required property string title
    required property string timeText
    required property string colorKey
    required property bool isToDo
    required property bool isOverdue
    required property int count

    signal chosen
    signal toggled

    function takeFocus(reason: int) {
        if (isToDo)
            FocusHandover.give(circle, reason);
        else
            FocusHandover.give(place, reason);
    }

    height: index > 0 ? 45 : 44

    PlaceButton {
        id: place

        anchors.fill: parent
        isFirst: row.index === 0
        isLast: row.index === row.count - 1
        Accessible.name: row.title + ", " + time.spoken
        onClicked: row.chosen()

        AppText {
            x: 49
            anchors.verticalCenter: parent.verticalCenter
            width: time.x - x - 12
            text: row.title
            token: Theme.rowTitle
            Accessible.ignored: true

            ElidedTip {}
        }
        AppText {
            id: time

            readonly property string spoken: row.isOverdue ? text + Language.text("，已过期", ", overdue") : text

            x: parent.width - width - 21
            anchors.verticalCenter: parent.verticalCenter
            text: row.timeText
            token: Theme.caption
            color: row.isOverdue ? Theme.destructive : Theme.textSecondary
            Accessible.ignored: true
        }
    }
    Separator {
        x: 47
        width: parent.width - 48
        visible: row.index > 0
    }
    ColorMark {
        x: 22
        anchors.verticalCenter: parent.verticalCenter
        visible: !row.isToDo
        color: row.isToDo ? Theme.transparent : Theme.scheduleColor(row.colorKey)
    }
    CompletionCircle {
        id: circle

        x: 13
        anchors.verticalCenter: parent.verticalCenter
        visible: row.isToDo
        itemTitle: row.title
        onClicked: row.toggled()
    }
}

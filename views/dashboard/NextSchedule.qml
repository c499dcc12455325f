import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// The next schedule of today, or what to read when there is none.
Card {
    id: next

    required property bool hasSchedule
    required property string title
    required property string dateText
    required property string colorKey

    implicitHeight: hasSchedule ? 80 : nothing.height + 36

    Rectangle {
        visible: next.hasSchedule
        x: 21
        anchors.verticalCenter: parent.verticalCenter
        width: 4
        height: 40
        radius: 2
        color: next.hasSchedule ? Theme.scheduleColor(next.colorKey) : Theme.transparent
    }
    AppText {
        visible: next.hasSchedule
        x: 39
        y: 18
        width: parent.width - 60
        text: next.title
        token: Theme.heading

        ElidedTip {}
    }
    AppText {
        visible: next.hasSchedule
        x: 39
        y: 42
        width: parent.width - 60
        text: next.dateText
        token: Theme.control
        color: Theme.textSecondary
    }
    Empty {
        id: nothing

        visible: !next.hasSchedule
        x: 21
        y: 18
        width: parent.width - 42
        text: Language.text("还没有安排日程，给今天留一点空间吧。", "No schedules yet. Leave space for your day.")
    }
}

import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// The next schedule of today, which leads to it, or what to read when there is none.
Item {
    id: next

    required property bool hasSchedule
    required property string title
    required property string dateText
    required property string colorKey

    signal chosen

    implicitHeight: hasSchedule ? 80 : nothing.height + 36

    Card {
        anchors.fill: parent
        visible: !next.hasSchedule
    }
    PlaceButton {
        anchors.fill: parent
        visible: next.hasSchedule
        isCard: true
        Accessible.name: next.title + ", " + next.dateText
        onClicked: next.chosen()

        Rectangle {
            x: 21
            anchors.verticalCenter: parent.verticalCenter
            width: 4
            height: 40
            radius: 2
            color: next.hasSchedule ? Theme.scheduleColor(next.colorKey) : Theme.transparent
        }
        AppText {
            x: 39
            y: 18
            width: parent.width - 60
            text: next.title
            token: Theme.heading
            Accessible.ignored: true

            ElidedTip {}
        }
        AppText {
            x: 39
            y: 42
            width: parent.width - 60
            text: next.dateText
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }
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

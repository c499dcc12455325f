pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// The first goals with their progress, each of which leads to it, or what to read when there are none.
Card {
    id: list

    required property var goals
    required property int count

    signal chosen(string id)

    implicitHeight: count > 0 ? rows.height : nothing.height + 36

    Column {
        id: rows

        width: parent.width
        visible: list.count > 0

        Repeater {
            model: list.goals

            PlaceButton {
                id: row

                required property int index
                required property string goalId
                required property string title
                required property real progress
                required property int percentage

                width: rows.width
                height: row.index > 0 ? 49 : 48
                isFirst: row.index === 0
                isLast: row.index === list.count - 1
                Accessible.name: row.title + ", " + row.percentage + "%"
                onClicked: list.chosen(row.goalId)

                Separator {
                    x: 1
                    width: parent.width - 2
                    visible: row.index > 0
                }
                AppText {
                    x: 21
                    anchors.verticalCenter: track.verticalCenter
                    width: track.x - x - 20
                    text: row.title
                    token: Theme.rowTitle
                    Accessible.ignored: true

                    ElidedTip {}
                }
                ProgressTrack {
                    id: track

                    x: parent.width - 81 - width
                    y: row.height - 27
                    width: Math.round((parent.width - 42) * 0.34)
                    height: 6
                    value: row.progress
                    fill: Theme.purple
                    itemTitle: row.title
                }
                AppText {
                    x: parent.width - 61
                    anchors.verticalCenter: track.verticalCenter
                    width: 40
                    text: row.percentage + "%"
                    token: Theme.rowTitle
                    color: Theme.textSecondary
                    horizontalAlignment: Text.AlignRight
                    Accessible.ignored: true
                }
            }
        }
    }
    Empty {
        id: nothing

        visible: list.count === 0
        x: 21
        y: 18
        width: parent.width - 42
        text: Language.text("建立一个目标，让每一天都有方向。", "Create a goal to give each day direction.")
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The newest restore points, each of which can be shown.
Column {
    id: box

    required property CalendarSyncModel sync

    signal chosen(fileName: string)

    spacing: 8

    AppText {
        text: Language.text("还原点", "Restore points")
        token: Theme.groupLabel
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        width: parent.width
        height: rows.height + 2
        radius: Theme.popupRadius
        color: Theme.transparent
        border.width: 1
        border.color: Theme.border

        Column {
            id: rows

            x: 1
            y: 1
            width: parent.width - 2

            Repeater {
                model: box.sync.restorePoints

                delegate: Item {
                    id: row

                    required property int index
                    required property string fileName
                    required property string title
                    required property string moment

                    width: rows.width
                    height: 53

                    Column {
                        x: 12
                        width: parent.width - show.width - 32
                        anchors.verticalCenter: parent.verticalCenter

                        AppText {
                            width: parent.width
                            text: row.title
                            token: Theme.control

                            ElidedTip {}
                        }

                        AppText {
                            text: row.moment
                            token: Theme.caption
                            color: Theme.textSecondary
                        }
                    }

                    AppButton {
                        id: show

                        anchors.right: parent.right
                        anchors.rightMargin: 8
                        anchors.verticalCenter: parent.verticalCenter
                        isSmall: true
                        isRaised: true
                        text: Language.text("查看", "Show")
                        Accessible.name: text + ", " + row.title
                        onClicked: box.chosen(row.fileName)
                    }

                    Separator {
                        width: parent.width
                        visible: row.index > 0
                    }
                }
            }
        }
    }
}

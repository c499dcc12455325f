pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The events of a linked calendar that were left out, each with its day, the reason and the line.
Column {
    id: list

    required property LinkDetailsModel details

    spacing: 8

    Row {
        spacing: 4

        AppText {
            id: heading

            text: Language.text("跳过", "Skipped")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
            Accessible.name: text + " " + count.text
        }

        AppText {
            id: count

            anchors.baseline: heading.baseline
            text: list.details.skippedCount
            token: Theme.caption
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }

    Rectangle {
        width: parent.width
        height: rows.height + 2
        radius: Theme.popupRadius
        color: Theme.field
        border.width: 1
        border.color: Theme.border

        Column {
            id: rows

            x: 1
            y: 1
            width: parent.width - 2

            Repeater {
                model: list.details.skipped

                Item {
                    id: row

                    required property int index
                    required property string title
                    required property string day
                    required property string reason

                    width: rows.width
                    height: 57
                    Accessible.role: Accessible.ListItem
                    Accessible.name: row.title + ", " + row.day + ", " + row.reason

                    Separator {
                        width: parent.width
                        visible: row.index > 0
                    }

                    AppText {
                        x: 12
                        y: 10
                        width: dayLabel.x - x - 12
                        text: row.title
                        token: Theme.control
                        Accessible.ignored: true

                        ElidedTip {}
                    }

                    AppText {
                        id: dayLabel

                        x: parent.width - width - 12
                        y: 10
                        text: row.day
                        token: Theme.caption
                        color: Theme.textSecondary
                        Accessible.ignored: true
                    }

                    AppText {
                        x: 12
                        y: 30
                        width: parent.width - 24
                        text: row.reason
                        token: Theme.caption
                        color: Theme.textSecondary
                        Accessible.ignored: true

                        ElidedTip {}
                    }
                }
            }
        }
    }

    AppText {
        visible: list.details.unlistedCount > 0
        text: Language.text("还有 %1 个", "%1 more").arg(list.details.unlistedCount)
        token: Theme.caption
        color: Theme.textSecondary
    }
}

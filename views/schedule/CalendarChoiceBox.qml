pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// A boxed list of check boxes for accounts and their calendars, or for linked calendars.
Rectangle {
    id: box

    required property QtObject choices
    /// A list without accounts, so nothing is indented.
    property bool isPlain: false

    signal chosen(int row, bool isChosen)

    implicitHeight: column.height + 2
    radius: Theme.popupRadius
    color: Theme.field
    border.width: 1
    border.color: Theme.border

    Column {
        id: column

        x: 1
        y: 1
        width: parent.width - 2

        Repeater {
            id: rows

            model: box.choices

            CalendarToggleRow {
                width: column.width
                isPlain: box.isPlain
                isFirst: index === 0
                isLast: index === rows.count - 1
                onChosen: isChosen => box.chosen(index, isChosen)
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Dashboard
import Tessaly.Ui

/// What is left of the day: schedules, and to-dos that can be ticked. Each leads to its place.
Card {
    id: list

    required property TodayModel today

    signal chosen(int section, string id)
    /// The last one was ticked.
    signal emptied

    function toggle(row: int) {
        const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
        const next = today.toggle(row);
        const heir = rows.itemAt(next) as TodayRow;
        if (heir)
            heir.takeFocus(reason);
        else
            emptied();
    }

    implicitHeight: column.height

    Column {
        id: column

        width: parent.width

        Repeater {
            id: rows

            model: list.today.rows

            TodayRow {
                width: column.width
                count: list.today.count
                onChosen: list.chosen(section, itemId)
                onToggled: list.toggle(index)
            }
        }
    }
}

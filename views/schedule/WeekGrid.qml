pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// Hour labels and the lines between hours and days.
Item {
    id: grid

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry

    Repeater {
        model: grid.viewModel.hourCount

        Item {
            id: hour

            required property int index

            y: Math.round(grid.geometry.headerHeight + index * grid.viewModel.hourHeight)
            width: grid.width

            AppText {
                y: 1
                width: grid.geometry.hourColumn - 9
                horizontalAlignment: Text.AlignRight
                text: String(grid.viewModel.startHour + hour.index).padStart(2, "0") + ":00"
                color: Theme.textTertiary
                token: Theme.mini
                Accessible.ignored: true
            }

            Separator {
                x: grid.geometry.hourColumn
                width: parent.width - x
                color: Theme.gridLine
            }
        }
    }

    Repeater {
        model: 7

        Separator {
            required property int index

            x: Math.round(grid.geometry.dayLeft(index) - 1)
            y: grid.geometry.headerHeight
            width: 1
            height: grid.viewModel.totalHeight
            color: Theme.gridLine
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// Weekday names, week numbers and the lines between the days of the month.
Item {
    id: grid

    required property ScheduleViewModel viewModel
    required property MonthGeometry geometry

    Repeater {
        model: grid.viewModel.weekdayNames

        LineText {
            required property int index
            required property string modelData

            x: grid.geometry.columnLeft(index) + 12
            height: grid.geometry.weekdayHeight
            text: modelData
            color: Theme.textSecondary
            token: Theme.captionMedium
        }
    }

    Repeater {
        model: 6

        Separator {
            required property int index

            y: grid.geometry.weekdayHeight + index * grid.geometry.cellHeight
            width: grid.geometry.width
            color: Theme.gridLine
        }
    }

    Repeater {
        model: 6

        Separator {
            required property int index

            x: grid.geometry.columnLeft(index + 1) - 1
            y: grid.geometry.weekdayHeight
            width: 1
            height: 6 * grid.geometry.cellHeight
            color: Theme.gridLine
        }
    }

    Repeater {
        model: grid.viewModel.weekNumbers

        LineText {
            required property int index
            required property string modelData

            y: grid.geometry.weekdayHeight + index * grid.geometry.cellHeight + 5
            width: grid.geometry.gutter
            height: 24
            horizontalAlignment: Text.AlignHCenter
            text: modelData
            color: Theme.textTertiary
            token: Theme.mini
            Accessible.role: Accessible.StaticText
            Accessible.name: Language.text("第 %1 周", "Week %1").arg(modelData)
        }
    }

    Separator {
        x: grid.geometry.gutter - 1
        y: grid.geometry.weekdayHeight
        width: 1
        height: 6 * grid.geometry.cellHeight
        visible: grid.geometry.gutter > 0
        color: Theme.gridLine
    }
}

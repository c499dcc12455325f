pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// Hour labels and the lines between hours and days.
Item {
    id: grid

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    readonly property CurrentTime time: viewModel.currentTime
    readonly property WeekDragModel drag: viewModel.drag

    Repeater {
        model: grid.viewModel.hourCount

        Item {
            id: hour

            required property int index

            y: Math.round(grid.geometry.hoursTop + index * grid.viewModel.hourHeight)
            width: grid.width

            AppText {
                readonly property real middle: hour.y + y + height / 2 - grid.geometry.hoursTop

                y: 1
                width: grid.geometry.hourColumn - 9
                horizontalAlignment: Text.AlignRight
                visible: !now.covers(middle) && !start.covers(middle) && !end.covers(middle)
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

    Separator {
        x: grid.geometry.hourColumn
        y: grid.geometry.headerHeight
        width: parent.width - x
        visible: grid.geometry.hoursTop > grid.geometry.headerHeight
        color: Theme.gridLine
    }

    Separator {
        x: grid.geometry.hourColumn
        y: Math.round(grid.geometry.hoursTop + grid.viewModel.totalHeight)
        width: parent.width - x
        visible: grid.geometry.margins.afterHeight > 0
        color: Theme.gridLine
    }

    HourMark {
        id: now

        geometry: grid.geometry
        at: grid.time.y
        text: grid.time.text
        color: Theme.now
        visible: text !== "" && !start.covers(at) && !end.covers(at)
    }

    HourMark {
        id: start

        geometry: grid.geometry
        at: grid.drag.startY
        text: grid.drag.startText
        color: Theme.accentText
    }

    HourMark {
        id: end

        geometry: grid.geometry
        at: grid.drag.endY
        text: grid.drag.endText
        color: Theme.accentText
    }

    Repeater {
        model: grid.geometry.dayCount

        Separator {
            required property int index

            x: Math.round(grid.geometry.dayLeft(index) - 1)
            y: grid.geometry.headerHeight
            width: 1
            height: grid.height - y
            color: Theme.gridLine
        }
    }
}

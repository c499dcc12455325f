pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule

/// Along the upper and lower edge of the time area, how many schedules of a day are before and after the shown hours.
Item {
    id: area

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry

    Repeater {
        model: area.viewModel.margins.marks

        CountMark {
            x: Math.round(area.geometry.dayLeft(place) - area.geometry.hourColumn + 3)
            y: kind === 1 ? 2 - area.geometry.margins.beforeHeight : Math.round(area.viewModel.totalHeight) + 2
            visible: kind !== 0
            iconName: kind === 1 ? "chevron-up" : "chevron-down"
            onClicked: area.viewModel.focusPlace(place)
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule

/// The day headers: one stop for the Tab key, arrows inside.
Item {
    id: header

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    /// The focus day is not among the shown ones when it is of a hidden weekend.
    property int currentPlace: Math.max(0, viewModel.focusedPlace)

    function focusPlace(place: int) {
        currentPlace = Math.max(0, Math.min(geometry.dayCount - 1, place));
        (days.itemAt(currentPlace) as DayHeader).forceActiveFocus(Qt.TabFocusReason);
    }

    Connections {
        target: header.viewModel

        function onTitlesChanged() {
            header.currentPlace = Math.max(0, header.viewModel.focusedPlace);
        }
    }

    Repeater {
        id: days

        model: header.viewModel.weekDays

        DayHeader {
            x: header.geometry.dayLeft(index) + 3
            y: 2
            width: header.geometry.dayWidth - 6
            height: header.height - 4
            activeFocusOnTab: activeFocus || index === header.currentPlace
            onClicked: header.viewModel.focusPlace(index)
            Keys.onLeftPressed: header.focusPlace(index - 1)
            Keys.onRightPressed: header.focusPlace(index + 1)
        }
    }
}

import QtQml
import Tessaly.Schedule

/// Where the columns of the week lie.
QtObject {
    /// Width of the whole timeline inside its border.
    required property real width
    readonly property real hourColumn: 48
    required property int dayCount
    /// Whether each day has a note beneath its number.
    required property bool hasNotes
    /// What stands above and below the hours.
    required property WeekMargins margins
    readonly property real allDayHeight: margins.allDayHeight
    readonly property real headerHeight: hasNotes ? 62 : 48
    /// Where the time area begins.
    readonly property real hoursTop: headerHeight + allDayHeight + margins.beforeHeight
    readonly property real dayWidth: (width - hourColumn - (dayCount - 1)) / dayCount

    function dayLeft(place: int): real {
        return hourColumn + place * (dayWidth + 1);
    }
}

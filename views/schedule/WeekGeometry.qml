import QtQml

/// Where the columns of the week lie.
QtObject {
    /// Width of the whole timeline inside its border.
    required property real width
    readonly property real hourColumn: 48
    readonly property real headerHeight: 48
    readonly property real dayWidth: (width - hourColumn - 6) / 7

    function dayLeft(place: int): real {
        return hourColumn + place * (dayWidth + 1);
    }
}

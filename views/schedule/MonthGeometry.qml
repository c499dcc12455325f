import QtQml

/// Where the days of the month lie.
QtObject {
    /// Width of the whole month inside its border.
    required property real width
    required property bool hasWeekNumbers
    readonly property real weekdayHeight: 32
    readonly property real cellHeight: 82
    /// Of the week numbers.
    readonly property real gutter: hasWeekNumbers ? 34 : 0
    readonly property real columnWidth: (width - gutter) / 7

    /// Column edges fall on whole pixels so that the hairlines stay sharp.
    function columnLeft(column: int): real {
        return gutter + Math.round(columnWidth * column);
    }

    function rowTop(place: int): real {
        return weekdayHeight + Math.floor(place / 7) * cellHeight;
    }

    /// Of the day under a point, or of the nearest one.
    function placeAt(x: real, y: real): int {
        const column = Math.max(0, Math.min(6, Math.floor((x - gutter) / columnWidth)));
        return 7 * Math.max(0, Math.min(5, Math.floor((y - weekdayHeight) / cellHeight))) + column;
    }
}

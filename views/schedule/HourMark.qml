import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// A time in the hour column, between the labels of the hours.
LineText {
    id: mark

    required property WeekGeometry geometry
    /// Points below the top of the time area.
    required property real at

    /// Whether the label of an hour, with its middle there, must make room.
    function covers(middle: real): bool {
        return visible && Math.abs(middle - at) < 15;
    }

    y: Math.round(geometry.hoursTop + at - height / 2)
    width: geometry.hourColumn - 9
    horizontalAlignment: Text.AlignRight
    visible: text !== ""
    token: Theme.hourMark
}

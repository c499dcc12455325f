import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The line of the current time in today's column. It takes no clicks and no focus.
Item {
    id: line

    required property CurrentTime time
    required property WeekGeometry geometry

    x: geometry.dayLeft(time.place) - 1
    y: Math.round(time.y)
    width: geometry.dayWidth + 1
    visible: time.place >= 0

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.now
    }

    Rectangle {
        x: -4
        y: -4
        width: 8
        height: 8
        radius: 4
        color: Theme.now
    }
}

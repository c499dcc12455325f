pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The week: hour labels, seven day columns with their headers, and a block for each schedule.
Card {
    id: timeline

    required property ScheduleViewModel viewModel

    /// A click chose an empty time for the form.
    signal timeChosen

    implicitHeight: geometry.headerHeight + viewModel.totalHeight + 2 * border.width

    WeekGeometry {
        id: geometry

        width: timeline.width - 2 * timeline.border.width
    }

    Binding {
        target: timeline.viewModel
        property: "dayWidth"
        value: geometry.dayWidth
    }

    Item {
        id: content

        anchors.fill: parent
        anchors.margins: timeline.border.width

        WeekGrid {
            anchors.fill: parent
            viewModel: timeline.viewModel
            geometry: geometry
        }

        WeekHeader {
            width: parent.width
            height: geometry.headerHeight
            viewModel: timeline.viewModel
            geometry: geometry
        }

        Repeater {
            model: 7

            Item {
                id: column

                required property int index

                x: geometry.dayLeft(index)
                y: geometry.headerHeight
                width: geometry.dayWidth
                height: timeline.viewModel.totalHeight

                TapHandler {
                    onTapped: point => {
                        if (tapCount > 1)
                            return;
                        timeline.viewModel.tapTime(column.index, point.position.y);
                        timeline.timeChosen();
                    }
                }
            }
        }

        WeekBlocks {
            anchors.fill: parent
            anchors.topMargin: geometry.headerHeight
            viewModel: timeline.viewModel
            geometry: geometry
        }
    }
}

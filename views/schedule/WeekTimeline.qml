pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The week: hour labels, seven day columns with their headers, and a block for each schedule.
Rectangle {
    id: timeline

    required property ScheduleViewModel viewModel

    implicitHeight: geometry.headerHeight + viewModel.totalHeight + 2 * border.width
    radius: Theme.radiusCard
    color: Theme.card
    border.width: 1
    border.color: Theme.border

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

        Repeater {
            model: timeline.viewModel.hourCount

            Text {
                required property int index

                y: geometry.headerHeight + index * timeline.viewModel.hourHeight + 1
                width: geometry.hourColumn - 9
                horizontalAlignment: Text.AlignRight
                text: String(timeline.viewModel.startHour + index).padStart(2, "0") + ":00"
                color: Theme.text3
                font: Theme.mini
                Accessible.ignored: true
            }
        }

        Repeater {
            model: timeline.viewModel.hourCount

            Rectangle {
                required property int index

                x: geometry.hourColumn
                y: Math.round(geometry.headerHeight + index * timeline.viewModel.hourHeight)
                width: content.width - x
                height: 1
                color: Theme.gridLine
            }
        }

        Repeater {
            model: 7

            Rectangle {
                required property int index

                x: Math.round(geometry.dayLeft(index) - 1)
                y: geometry.headerHeight
                width: 1
                height: timeline.viewModel.totalHeight
                color: Theme.gridLine
            }
        }

        WeekHeader {
            width: content.width
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
                    onTapped: (point) => timeline.viewModel.tapTime(column.index, point.position.y)
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

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The month: weekday names over six weeks of day cells. One stop for the Tab key, arrows move by day, Page keys by
/// month.
Card {
    id: grid

    required property ScheduleViewModel viewModel
    /// What the month scrolls in.
    required property ScrollPage scroll
    property int currentPlace: viewModel.focusedPlace
    property DayCell ringed: null
    readonly property string chosenDay: viewModel.headerTitle + viewModel.focusedPlace

    /// The day is to be seen in full.
    signal dayOpened

    /// Beyond the days shown, the month of that day is shown and the focus follows there.
    function focusPlace(place: int) {
        if (place < 0 || place >= cells.count) {
            viewModel.focusPlace(place);
            return;
        }
        currentPlace = place;
        (cells.itemAt(place) as DayCell).forceActiveFocus(Qt.TabFocusReason);
    }

    function turnFrom(place: int, months: int) {
        viewModel.focusPlace(place);
        if (months < 0)
            viewModel.showPrevious();
        else
            viewModel.showNext();
    }

    /// A day of another month stands in another place once its month is shown; the focus goes with the day.
    function followDay() {
        const target = cells.itemAt(viewModel.focusedPlace) as DayCell;
        currentPlace = viewModel.focusedPlace;
        for (let place = 0; place < cells.count; ++place) {
            const cell = cells.itemAt(place) as DayCell;
            if (cell.activeFocus && target && cell !== target) {
                target.forceActiveFocus(cell.focusReason);
                return;
            }
        }
    }

    /// The line under the pointer that pressed the cell; null when there is none.
    function lineAt(cell: DayCell): MonthLine {
        return content.childAt(cell.x + cell.pressX, cell.y + cell.pressY) as MonthLine;
    }

    function openDay(place: int) {
        viewModel.focusPlace(place);
        dayOpened();
    }

    onChosenDayChanged: followDay()

    implicitHeight: geometry.weekdayHeight + 6 * geometry.cellHeight + 2 * border.width

    MonthGeometry {
        id: geometry

        width: grid.width - 2 * grid.border.width
        hasWeekNumbers: grid.viewModel.weekNumbers.length > 0
    }

    Item {
        id: content

        anchors.fill: parent
        anchors.margins: grid.border.width

        MonthGestures {
            id: gestures

            anchors.fill: parent
            anchors.topMargin: geometry.weekdayHeight
            drag: grid.viewModel.monthDrag
            geometry: geometry
            scroll: grid.scroll
            lines: content
        }

        MonthGrid {
            anchors.fill: parent
            viewModel: grid.viewModel
            geometry: geometry
        }

        Repeater {
            id: cells

            model: grid.viewModel.monthDays

            DayCell {
                id: cell

                readonly property int column: index % 7

                x: geometry.columnLeft(column)
                y: geometry.weekdayHeight + Math.floor(index / 7) * geometry.cellHeight
                width: geometry.columnLeft(column + 1) - x
                height: geometry.cellHeight
                activeFocusOnTab: activeFocus || index === grid.currentPlace
                onClicked: {
                    const line = grid.lineAt(cell);
                    grid.viewModel.focusPlace(index);
                    if (line?.isMore)
                        grid.dayOpened();
                }
                onDoubleClicked: {
                    const line = grid.lineAt(cell);
                    if (line !== null && !line.isMore)
                        grid.viewModel.openMonthLine(line.index);
                }
                onVisualFocusChanged: {
                    if (visualFocus)
                        grid.ringed = cell;
                    else if (grid.ringed === cell)
                        grid.ringed = null;
                }
                Keys.onLeftPressed: grid.focusPlace(index - 1)
                Keys.onRightPressed: grid.focusPlace(index + 1)
                Keys.onUpPressed: grid.focusPlace(index - 7)
                Keys.onDownPressed: grid.focusPlace(index + 7)
                Keys.onPressed: event => {
                    event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown;
                    if (event.accepted)
                        grid.turnFrom(index, event.key === Qt.Key_PageUp ? -1 : 1);
                }
            }
        }

        Repeater {
            model: grid.viewModel.monthLines

            MonthLine {
                readonly property int column: cellIndex % 7

                x: geometry.columnLeft(column) + 9
                y: geometry.weekdayHeight + Math.floor(cellIndex / 7) * geometry.cellHeight + 29 + slot * 19
                width: geometry.columnLeft(column + 1) - x - (isNarrow ? 4 : 7)
                isNarrow: geometry.columnWidth < 110
                opacity: index === gestures.drag.row ? 0.4 : 1
                onPressed: {
                    if (isMore)
                        grid.openDay(cellIndex);
                    else
                        grid.viewModel.openMonthLine(index);
                }
                fill: cellIndex === grid.viewModel.focusedPlace ? Theme.focusDayCellFill : Theme.card
            }
        }

        MonthGhost {
            geometry: geometry
            gestures: gestures
        }

        // What a drag did is announced.
        Item {
            id: announcement

            Accessible.role: Accessible.StatusBar

            Connections {
                function onAnnounced(text: string) {
                    announcement.Accessible.name = text;
                }

                target: grid.viewModel
            }
        }

        FocusRing {
            parent: grid.ringed?.background ?? grid
            visible: grid.ringed !== null
            targetRadius: Theme.blockRadius
            gap: -2
        }
    }
}

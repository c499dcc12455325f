pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The row of all-day and multi-day schedules: one stop for the Tab key, arrows inside, and a count for what has no
/// room.
Item {
    id: area

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    /// What the week scrolls in.
    required property ScrollPage scroll
    readonly property WeekMargins margins: viewModel.margins
    property int currentRow: 0

    /// The last schedule is being deleted.
    signal emptied

    function focusRow(row: int): bool {
        const bar = bars.itemAt(row) as AllDayBar;
        if (bar === null)
            return false;
        currentRow = row;
        bar.forceActiveFocus(Qt.TabFocusReason);
        return true;
    }

    /// Arrows lead to another schedule; with Ctrl they move it by days, with Shift they move its end.
    function step(event: KeyEvent, days: int, lines: int) {
        if (!(event.modifiers & (Qt.ControlModifier | Qt.ShiftModifier)))
            focusRow(margins.neighbourBar(currentRow, days, lines));
        else if (days !== 0)
            focusRow(event.modifiers & Qt.ControlModifier ? margins.moveBar(currentRow, days, event.isAutoRepeat) : margins.resizeBar(currentRow, days, event.isAutoRepeat));
    }

    visible: geometry.allDayHeight > 0
    Keys.onLeftPressed: event => step(event, -1, 0)
    Keys.onRightPressed: event => step(event, 1, 0)
    Keys.onUpPressed: event => step(event, 0, -1)
    Keys.onDownPressed: event => step(event, 0, 1)
    Keys.onDeletePressed: {
        const row = currentRow;
        if (!focusRow(row + 1) && !focusRow(row - 1))
            emptied();
        margins.deleteBar(row);
    }

    LineText {
        x: -area.geometry.hourColumn
        y: 6
        width: area.geometry.hourColumn - 9
        horizontalAlignment: Text.AlignRight
        text: Language.text("全天", "all-day")
        color: Theme.textTertiary
        token: Theme.mini
    }

    AllDayGestures {
        anchors.fill: parent
        viewModel: area.viewModel
        scroll: area.scroll
    }

    Item {
        anchors.fill: parent
        clip: true
        Accessible.role: Accessible.Grouping
        Accessible.name: Language.text("全天", "All-day")

        Repeater {
            id: bars

            model: area.margins.bars
            onItemRemoved: area.currentRow = Math.max(0, Math.min(area.currentRow, count - 1))

            AllDayBar {
                opacity: index === area.margins.drag.row ? 0.4 : 1
                activeFocusOnTab: activeFocus || index === area.currentRow
                onActiveFocusChanged: {
                    if (activeFocus)
                        area.currentRow = index;
                }
                onIndexChanged: {
                    if (activeFocus)
                        area.currentRow = index;
                }
                onClicked: area.margins.openBar(index)
            }
        }

        Repeater {
            model: area.margins.marks

            CountMark {
                x: area.geometry.dayLeft(place) - area.geometry.hourColumn + 3
                y: 69
                visible: kind === 0
                onClicked: area.viewModel.focusPlace(place)
            }
        }
    }

    AllDayGhost {
        drag: area.margins.drag
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The blocks of the week, clipped to the time area: one stop for the Tab key, arrows inside.
Item {
    id: area

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    property int currentRow: 0

    function focusRow(row: int) {
        const block = blocks.itemAt(row) as EventBlock;
        if (block === null)
            return;
        currentRow = row;
        block.forceActiveFocus(Qt.TabFocusReason);
    }

    clip: true

    Repeater {
        id: blocks

        model: area.viewModel.blocks
        onCountChanged: area.currentRow = Math.max(0, Math.min(area.currentRow, count - 1))

        EventBlock {
            x: area.geometry.dayLeft(dayIndex) + blockX
            y: blockY
            width: blockWidth
            height: blockHeight
            activeFocusOnTab: index === area.currentRow
            onActiveFocusChanged: {
                if (activeFocus)
                    area.currentRow = index;
            }
            onClicked: area.viewModel.selectBlock(index)
            Keys.onUpPressed: area.focusRow(area.viewModel.neighbourBlock(index, 0, -1))
            Keys.onDownPressed: area.focusRow(area.viewModel.neighbourBlock(index, 0, 1))
            Keys.onLeftPressed: area.focusRow(area.viewModel.neighbourBlock(index, -1, 0))
            Keys.onRightPressed: area.focusRow(area.viewModel.neighbourBlock(index, 1, 0))
        }
    }
}

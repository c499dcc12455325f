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
    /// The block under the pointer or with the keyboard focus that does not show all; one tooltip serves them all.
    property EventBlock explained: null

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
        onItemRemoved: area.currentRow = Math.max(0, Math.min(area.currentRow, count - 1))

        EventBlock {
            id: block

            readonly property real leftEdge: area.geometry.dayLeft(dayIndex) + blockX
            readonly property bool isExplained: (hovered || visualFocus) && hidesText

            // On whole pixels, so that edges and fades stay sharp.
            x: Math.round(leftEdge)
            y: Math.round(blockY)
            width: Math.round(leftEdge + blockWidth) - x
            height: Math.round(blockY + blockHeight) - y
            activeFocusOnTab: activeFocus || index === area.currentRow
            focusPolicy: index === area.currentRow ? Qt.StrongFocus : Qt.ClickFocus
            onActiveFocusChanged: {
                if (activeFocus)
                    area.currentRow = index;
            }
            onIsExplainedChanged: {
                if (isExplained)
                    area.explained = block;
                else if (area.explained === block)
                    area.explained = null;
            }
            onClicked: area.viewModel.selectBlock(index)
            Keys.onUpPressed: area.focusRow(area.viewModel.neighbourBlock(index, 0, -1))
            Keys.onDownPressed: area.focusRow(area.viewModel.neighbourBlock(index, 0, 1))
            Keys.onLeftPressed: area.focusRow(area.viewModel.neighbourBlock(index, -1, 0))
            Keys.onRightPressed: area.focusRow(area.viewModel.neighbourBlock(index, 1, 0))
        }
    }

    Item {
        x: area.explained?.x ?? 0
        y: area.explained?.y ?? 0
        width: area.explained?.width ?? 0
        height: area.explained?.height ?? 0

        AppToolTip {
            text: area.explained?.explanation ?? ""
            visible: area.explained !== null
        }
    }
}

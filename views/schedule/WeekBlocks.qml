pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The blocks of the week, clipped to the time area: one stop for the Tab key, arrows inside. A turn of the week makes
/// no new blocks; what only one block has at a time, they share.
Item {
    id: area

    required property ScheduleViewModel viewModel
    required property WeekGeometry geometry
    property int currentRow: 0
    /// The block under the pointer or with the keyboard focus that does not show all.
    property EventBlock explained: null
    property EventBlock ringed: null
    /// The block that is dragged stays where it was.
    property EventBlock dimmed: null
    readonly property bool isDragging: viewModel.drag.isActive

    /// The last block is being deleted.
    signal emptied

    function holdsFocus(): bool {
        return (blocks.itemAt(currentRow) as EventBlock)?.activeFocus ?? false;
    }

    /// Whether there is such a block.
    function focusRow(row: int): bool {
        const block = blocks.itemAt(row) as EventBlock;
        if (block === null || !block.visible)
            return false;
        currentRow = row;
        block.forceActiveFocus(Qt.TabFocusReason);
        return true;
    }

    /// Arrows lead to another block; with Ctrl they move it, with Shift they move its end.
    function step(event: KeyEvent, days: int, times: int) {
        if (event.modifiers & Qt.ControlModifier)
            focusRow(viewModel.moveBlock(currentRow, days, 15 * times, event.isAutoRepeat));
        else if (!(event.modifiers & Qt.ShiftModifier))
            focusRow(viewModel.neighbourBlock(currentRow, days, times));
        else if (times !== 0)
            focusRow(viewModel.resizeBlock(currentRow, 15 * times, event.isAutoRepeat));
    }

    function dimDragged() {
        if (dimmed !== null)
            dimmed.opacity = 1;
        dimmed = blocks.itemAt(viewModel.drag.draggedRow()) as EventBlock;
        if (dimmed !== null)
            dimmed.opacity = 0.4;
    }

    clip: true
    onIsDraggingChanged: dimDragged()
    Keys.onUpPressed: event => step(event, 0, -1)
    Keys.onDownPressed: event => step(event, 0, 1)
    Keys.onLeftPressed: event => step(event, -1, 0)
    Keys.onRightPressed: event => step(event, 1, 0)
    Keys.onDeletePressed: {
        const row = currentRow;
        if (!focusRow(row + 1) && !focusRow(row - 1))
            emptied();
        viewModel.deleteBlock(row);
    }

    Connections {
        function onBlockRestored(row: int) {
            const block = blocks.itemAt(row) as EventBlock;
            if (block !== null)
                flash.createObject(block, {
                    target: block
                });
        }
        function onWeekTurned() {
            area.currentRow = 0;
            area.dimDragged();
        }

        target: area.viewModel
    }

    Component {
        id: flash

        NumberAnimation {
            id: fading

            property: "flash"
            from: 1
            to: 0
            duration: Theme.flash
            easing.type: Easing.InQuad
            running: true
            onFinished: fading.destroy()

            readonly property Connections turns: Connections {
                function onWeekTurned() {
                    fading.stop();
                    (fading.target as EventBlock).flash = 0;
                    fading.destroy();
                }

                target: area.viewModel
            }
        }
    }

    BlockStyle {
        id: blockStyle

        ground: Theme.card
        ink: Theme.text
        quietInk: Theme.textSecondary
        selectedInk: Theme.blockTextSelected
        flash: Theme.accentSoft
        titleFont: Theme.blockTitle.font
        timeFont: Theme.mini.font
        radius: Theme.blockRadius
    }

    Item {
        x: area.geometry.hourColumn
        transform: PixelSnap {}

        Repeater {
            id: blocks

            // Before the page has its width, they would be made where they do not stay.
            model: area.viewModel.dayWidth > 0 ? area.viewModel.blocks : null
            onItemRemoved: area.currentRow = Math.max(0, Math.min(area.currentRow, count - 1))

            EventBlock {
                id: block

                style: blockStyle
                color: Theme.scheduleColor(colorKey)
                activeFocusOnTab: activeFocus || index === area.currentRow
                Accessible.role: Accessible.Button
                Accessible.name: spokenName
                Accessible.focusable: true
                Accessible.selectable: true
                Accessible.selected: isSelected
                Accessible.onPressAction: clicked()
                onActiveFocusChanged: {
                    if (activeFocus)
                        area.currentRow = index;
                }
                onIndexChanged: {
                    if (activeFocus)
                        area.currentRow = index;
                }
                onVisualFocusChanged: {
                    if (visualFocus)
                        area.ringed = block;
                    else if (area.ringed === block)
                        area.ringed = null;
                }
                onIsExplainedChanged: {
                    if (isExplained)
                        area.explained = block;
                    else if (area.explained === block)
                        area.explained = null;
                }
                onClicked: area.viewModel.selectBlock(index)
            }
        }

        Item {
            x: area.explained?.x ?? 0
            y: area.explained?.y ?? 0
            width: area.explained?.width ?? 0
            height: area.explained?.height ?? 0

            AppToolTip {
                text: area.explained?.explanation ?? ""
                visible: area.explained !== null && !area.isDragging
            }
        }
    }

    FocusRing {
        parent: area.ringed ?? area
        z: 1
        visible: area.ringed !== null
        targetRadius: Theme.blockRadius
        gap: -1
    }
}

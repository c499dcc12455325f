pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Store
import Tessaly.Todos
import Tessaly.Ui

/// The to-do screen: the add form, and the list as one column of rows that are created as they come into view.
Rectangle {
    id: screen

    readonly property alias scroll: list

    /// The row that is dragged and the header of the week that it would move to; -1 for none.
    property int draggedRow: -1
    property int targetRow: -1
    property real pageYAtStart: 0

    /// For a screen reader only; the same words again are news again.
    function announce(text: string) {
        news.text = "";
        news.text = text;
    }

    /// Edits the to-do of the row.
    function edit(row: int) {
        const place = viewModel.edit(row);
        list.forceLayout();
        const item = list.itemAtIndex(place) as ReminderListItem;
        item?.focusEditor();
        // Not only the field that has the focus.
        if (item)
            list.reveal(item);
    }

    /// Looks for the week to which what is dragged would move, `y` being a place in the list's content.
    function dragTo(y: real) {
        list.driftNear(y, list.originY, list.originY + list.contentHeight);
        targetRow = viewModel.weekHeaderFor(draggedRow, list.indexAt(list.columnX + 1, y));
    }

    function endDrag(isCancelled: bool) {
        const [dragged, target] = [draggedRow, isCancelled ? -1 : targetRow];
        draggedRow = -1;
        targetRow = -1;
        list.driftSpeed = 0;
        if (target >= 0)
            viewModel.moveToWeek(dragged, target);
    }

    /// Puts the focus on that part of the row, or on the form's title where it cannot be.
    function handFocusTo(row: int, part: int, reason: int) {
        // Until then the list answers with the rows of before.
        list.forceLayout();
        // A header may be too far up to be there.
        if (row >= 0 && list.itemAtIndex(row) === null)
            list.positionViewAtIndex(row, ListView.Contain);
        const item = list.itemAtIndex(row) as ReminderListItem;
        if (!item?.takeFocus(part, reason))
            form.focusTitle();
    }

    /// Shows the to-do and puts the focus on it.
    function reveal(id: string) {
        const row = viewModel.reveal(id);
        if (row < 0)
            return;
        handFocusTo(row, ReminderListItem.Circle, Qt.TabFocusReason);
        (list.itemAtIndex(row) as ReminderListItem)?.flash();
    }

    /// A new entry is to be typed.
    function startNew() {
        form.focusTitle();
    }

    color: Theme.bg

    ReminderViewModel {
        id: viewModel

        store: PlannerStore
        onRestored: row => {
            // Until then the list answers with the rows of before.
            list.forceLayout();
            (list.itemAtIndex(row) as ReminderListItem)?.flash();
        }
        onAdded: row => {
            (list.itemAtIndex(row) as ReminderListItem)?.flash();
            screen.announce(Language.text("已添加到“%1”", "Added to “%1”").arg(groupTitle(row)));
        }
        onMoved: row => {
            list.forceLayout();
            (list.itemAtIndex(row) as ReminderListItem)?.flash();
            screen.announce(Language.text("已移到“%1”", "Moved to “%1”").arg(groupTitle(row)));
        }
    }

    MissedReminders {
        id: missedReminders

        property bool wasThere: false

        store: PlannerStore
        onChanged: {
            if (count > 0 && !wasThere)
                missedNews.text = (wasClosed ? Language.text("%1 个错过的提醒", count === 1 ? "1 missed reminder" : "%1 missed reminders") : Language.text("%1 个提醒等待处理", count === 1 ? "1 reminder waits for you" : "%1 reminders wait for you")).arg(count);
            wasThere = count > 0;
        }
    }

    // For a screen reader only: the card says it once, when it appears.
    Item {
        id: missedNews

        property string text

        width: 1
        height: 1
        Accessible.role: Accessible.StatusBar
        Accessible.name: text
        Accessible.ignored: text === "" || missedReminders.count === 0
    }

    Shortcut {
        enabled: screen.draggedRow >= 0
        sequence: "Esc"
        onActivated: (list.itemAtIndex(screen.draggedRow) as ReminderListItem)?.cancelDrag()
    }

    // For a screen reader only: on the screen the header of the closed group flashes.
    Item {
        id: news

        property string text

        width: 1
        height: 1
        Accessible.role: Accessible.StatusBar
        Accessible.name: text
        Accessible.ignored: text === ""
    }

    ListPage {
        id: list

        anchors.fill: parent
        model: viewModel.rows
        // What is dragged must stay while the page scrolls.
        cacheBuffer: screen.draggedRow >= 0 ? 6000 : 600

        ReminderForm {
            id: form

            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            reminders: viewModel
            missed: missedReminders
        }

        delegate: ReminderListItem {
            width: list.width
            columnX: list.columnX
            columnWidth: list.columnWidth
            editor: viewModel.editor
            z: isDragged ? 1 : 0
            isTarget: index === screen.targetRow
            scrolledBy: isDragged ? list.contentY - screen.pageYAtStart : 0
            onEditRequested: screen.edit(index)
            onEditingFinished: isSaved => screen.handFocusTo(viewModel.endEditing(isSaved), ReminderListItem.Edit, Qt.TabFocusReason)
            onEditingLeft: viewModel.leaveEditing()
            onMovedByWeeks: weeks => {
                const row = viewModel.moveByWeeks(index, weeks);
                if (row >= 0)
                    screen.handFocusTo(row, ReminderListItem.Circle, Qt.TabFocusReason);
            }
            onDragStarted: {
                screen.pageYAtStart = list.contentY;
                screen.draggedRow = index;
            }
            onDraggedTo: y => screen.dragTo(mapToItem(list.contentItem, 0, y).y)
            onDragEnded: isCancelled => screen.endDrag(isCancelled)
            onExpansionRequested: isOpen => viewModel.setExpanded(index, isOpen)
            onToggled: {
                const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                screen.handFocusTo(viewModel.toggle(index), ReminderListItem.Circle, reason);
            }
            onRemoved: {
                const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                screen.handFocusTo(viewModel.remove(index), ReminderListItem.Delete, reason);
            }
        }
    }
}

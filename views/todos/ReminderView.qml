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
            const item = list.itemAtIndex(row) as ReminderListItem;
            if (item)
                item.flash();
            news.text = item && !item.isReminder ? Language.text("已添加到“%1”", "Added to “%1”").arg(item.groupText) : "";
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

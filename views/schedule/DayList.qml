pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// The schedules of the focus day, each with its actions.
Card {
    id: list

    required property ScheduleViewModel viewModel
    /// What of the list is in view, from its top.
    required property real viewTop
    required property real viewHeight
    readonly property int firstInView: Math.floor((viewTop - area.y) / Theme.rowHeight)
    readonly property int lastInView: Math.floor((viewTop + viewHeight - area.y) / Theme.rowHeight)

    /// The row that the Tab key stops at.
    property int currentPlace: 0

    /// The last schedule was removed: nothing in the list can take the focus.
    signal emptied

    function showView() {
        viewModel.showListed(firstInView, lastInView);
    }

    /// The row after the one that has left, else the previous one; null when none is left.
    function heir(): DayListItem {
        if (viewModel.listedCount === 0)
            return null;
        const place = Math.min(viewModel.departedPlace(), viewModel.listedCount - 1);
        return rows.itemAt(viewModel.keepListed(place)) as DayListItem;
    }

    /// The schedule was deleted: another one's Delete takes the focus.
    function focusAfterDeletion(reason: int) {
        const next = heir();
        if (next !== null)
            next.focusDelete(reason);
        else
            list.emptied();
    }

    /// Tints the row at the place and puts the focus on it.
    function reveal(place: int) {
        const row = viewModel.keepListed(place);
        (rows.itemAt(row) as DayListItem)?.focusEdit(Qt.TabFocusReason);
        viewModel.listedRestored(row);
    }

    function focusPlace(place: int) {
        if (place < 0 || place >= viewModel.listedCount)
            return;
        currentPlace = place;
        (rows.itemAt(viewModel.keepListed(place)) as DayListItem)?.forceActiveFocus(Qt.TabFocusReason);
    }

    /// The schedule went elsewhere: another one's Edit takes the focus.
    function focusAfterDeparture(reason: int) {
        const next = heir();
        if (next !== null)
            next.focusEdit(reason);
        else
            list.emptied();
    }

    implicitHeight: column.height + 2
    onFirstInViewChanged: showView()
    onLastInViewChanged: showView()

    Connections {
        function onListTurned() {
            list.currentPlace = 0;
        }

        function onListedRestored(row: int) {
            const item = rows.itemAt(row) as DayListItem;
            if (item !== null)
                (flash.createObject(item.ground, {radius: item.groundRadius}) as Flash).start();
        }

        target: list.viewModel
    }

    Component {
        id: flash

        Flash {
            id: tint

            anchors.fill: parent
            onFaded: tint.destroy()

            Connections {
                function onListTurned() {
                    tint.destroy();
                }

                target: list.viewModel
            }
        }
    }

    Column {
        id: column

        x: 1
        y: 1
        width: parent.width - 2

        HeadingText {
            width: parent.width
            height: token.line + topPadding + bottomPadding
            leftPadding: 16
            rightPadding: 16
            topPadding: 12
            bottomPadding: 8
            text: list.viewModel.dayListTitle
        }

        AppText {
            visible: list.viewModel.listedCount === 0
            height: token.line + topPadding + bottomPadding
            leftPadding: 16
            topPadding: 2
            bottomPadding: 16
            text: Language.text("当天还没有日程。", "No schedules for this day.")
            color: Theme.textSecondary
        }

        // As tall as all rows, though only those in and around what is in view are made.
        Item {
            id: area

            width: column.width
            height: list.viewModel.listedCount * Theme.rowHeight

            MouseArea {
                anchors.fill: parent
                onDoubleClicked: place => {
                    const row = area.childAt(place.x, place.y) as DayListItem;
                    if (row !== null)
                        list.viewModel.openListed(row.index);
                }
            }

            Repeater {
                id: rows

                model: list.viewModel.dayList

                DayListItem {
                    y: place * Theme.rowHeight
                    width: column.width
                    isLast: place === list.viewModel.listedCount - 1
                    activeFocusOnTab: activeFocus || place === Math.min(list.currentPlace, list.viewModel.listedCount - 1)
                    onHasFocusChanged: {
                        if (!hasFocus)
                            return;
                        list.viewModel.keepListed(place);
                        list.currentPlace = place;
                    }
                    Keys.onUpPressed: list.focusPlace(place - 1)
                    Keys.onDownPressed: list.focusPlace(place + 1)
                    onOpenRequested: list.viewModel.openListed(index)
                    onEditRequested: list.viewModel.editListed(index)
                    onDeleteRequested: {
                        const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
                        list.viewModel.deleteListed(index);
                        list.focusAfterDeletion(reason);
                    }
                }
            }
        }
    }
}

import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// The week: hour labels, seven day columns with their headers, and a block for each schedule.
Card {
    id: timeline

    required property ScheduleViewModel viewModel
    /// What the week scrolls in.
    required property ScrollPage scroll
    /// Whether something is being entered in the form.
    required property bool isFormInUse
    /// A time was chosen in the week and has not been used yet.
    property bool isTimeChosen: false
    readonly property alias gestures: gestures
    readonly property alias geometry: geometry

    /// Return was pressed in the form's ghost.
    signal formAccepted
    /// The Tab key leads from the form's ghost to the form.
    signal formRequested

    /// The block of what was just added takes the focus.
    function showAdded() {
        isTimeChosen = false;
        if (!blocks.focusRow(viewModel.addedBlock()))
            header.focusPlace(viewModel.focusedPlace);
    }

    function focusDay() {
        header.focusPlace(viewModel.focusedPlace);
    }

    function turn(weeks: int) {
        const wasInBlocks = blocks.holdsFocus();
        if (weeks < 0)
            viewModel.showPrevious();
        else
            viewModel.showNext();
        // The block with the focus shows another schedule now, or none.
        if (wasInBlocks && !blocks.focusRow(0))
            header.focusPlace(viewModel.focusedPlace);
    }

    Keys.onPressed: event => {
        event.accepted = event.modifiers === Qt.NoModifier && (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown);
        if (event.accepted)
            turn(event.key === Qt.Key_PageUp ? -1 : 1);
    }
    implicitHeight: geometry.hoursTop + viewModel.totalHeight + viewModel.margins.afterHeight + 2 * border.width

    WeekGeometry {
        id: geometry

        width: timeline.width - 2 * timeline.border.width
        dayCount: timeline.viewModel.dayCount
        hasNotes: timeline.viewModel.hasDayNotes
        margins: timeline.viewModel.margins
    }

    Connections {
        function onTimeChosen() {
            timeline.isTimeChosen = true;
            (ghost.item as FormGhost).takeFocus();
        }

        target: timeline.viewModel
    }

    Binding {
        target: timeline.viewModel
        property: "dayWidth"
        value: geometry.dayWidth
        when: geometry.dayWidth > 0
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
            id: header

            width: parent.width
            height: geometry.headerHeight
            viewModel: timeline.viewModel
            geometry: geometry
        }

        // Bound components cannot be made by a Loader of another file in Qt 6.4.
        // qmllint disable unqualified

        Loader {
            readonly property bool isNeeded: geometry.allDayHeight > 0

            x: geometry.hourColumn
            y: geometry.headerHeight
            width: parent.width - x
            height: geometry.allDayHeight
            active: false
            onIsNeededChanged: {
                if (isNeeded)
                    active = true;
            }
            sourceComponent: AllDayArea {
                viewModel: timeline.viewModel
                geometry: timeline.geometry
                scroll: timeline.scroll
                onEmptied: timeline.focusDay()
            }
        }

        // qmllint enable unqualified

        WeekGestures {
            id: gestures

            x: geometry.hourColumn
            y: geometry.hoursTop
            width: parent.width - x
            height: timeline.viewModel.totalHeight
            viewModel: timeline.viewModel
            geometry: geometry
            scroll: timeline.scroll
        }

        WeekBlocks {
            id: blocks

            onEmptied: header.focusPlace(timeline.viewModel.focusedPlace)
            anchors.fill: parent
            anchors.topMargin: geometry.hoursTop
            viewModel: timeline.viewModel
            geometry: geometry
        }

        HiddenTimes {
            x: geometry.hourColumn
            y: geometry.hoursTop
            viewModel: timeline.viewModel
            geometry: geometry
        }

        // Bound components cannot be made by a Loader of another file in Qt 6.4.
        // qmllint disable unqualified

        Loader {
            id: ghost

            readonly property bool isShown: timeline.isTimeChosen || timeline.isFormInUse || timeline.viewModel.form.title !== ""

            x: geometry.hourColumn
            y: geometry.hoursTop
            active: false
            visible: isShown && timeline.viewModel.formFrame.width > 0
            onIsShownChanged: {
                if (isShown)
                    active = true;
            }
            sourceComponent: FormGhost {
                viewModel: timeline.viewModel
                onAccepted: timeline.formAccepted()
                onEmptied: {
                    timeline.isTimeChosen = false;
                    header.focusPlace(timeline.viewModel.focusedPlace);
                }
                onAbandoned: timeline.isTimeChosen = false
                onTabbed: timeline.formRequested()
            }
        }

        // qmllint enable unqualified

        // What the keys do to a block is announced.
        Item {
            id: announcement

            Accessible.role: Accessible.StatusBar

            Connections {
                function onAnnounced(text: string) {
                    announcement.Accessible.name = text;
                }

                target: timeline.viewModel
            }
        }

        Item {
            y: geometry.hoursTop

            NowLine {
                time: timeline.viewModel.currentTime
                geometry: geometry
            }

            WeekGhost {
                drag: timeline.viewModel.drag
                geometry: geometry
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// The screens by name. One stop for the Tab key; the arrow keys choose.
FocusScope {
    id: list

    property int section
    property bool isFocusVisible: false

    signal chosen(section: int)

    readonly property list<SidebarRow> rows: [overviewRow, scheduleRow, remindersRow, goalsRow, documentsRow]

    function step(rows: int) {
        const target = Math.max(0, Math.min(list.rows.length - 1, section + rows));
        isFocusVisible = true;
        if (target !== section)
            chosen(target);
    }

    implicitHeight: column.implicitHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: Language.text("工作台", "Workspace")
    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            step(event.key === Qt.Key_Home ? -rows.length : rows.length);
            event.accepted = true;
        }
    }
    // The key that brought the focus here is released here.
    Keys.onReleased: event => {
        if (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab)
            isFocusVisible = true;
    }
    onActiveFocusChanged: isFocusVisible = false

    component Caption: Item {
        property alias text: label.text

        width: column.width

        AppText {
            id: label

            x: 10
            width: parent.width - x
            height: 16
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 4
            token: Theme.captionBold
            color: Theme.textTertiary
            Accessible.role: Accessible.Heading
        }
    }

    component Choice: SidebarRow {
        id: choice

        width: column.width
        isSelected: list.section === section
        hasFocusRing: isSelected && list.activeFocus && list.isFocusVisible
        // The chosen row has the focus, so that screen readers announce it.
        Component.onCompleted: focus = isSelected
        onIsSelectedChanged: {
            if (isSelected)
                focus = true;
        }
        onChosen: {
            list.forceActiveFocus(Qt.MouseFocusReason);
            list.isFocusVisible = false;
            list.chosen(choice.section);
        }
    }

    Column {
        id: column

        width: parent.width
        spacing: 2

        Caption {
            text: Language.text("工作台", "Workspace")
            height: 20
        }
        Choice {
            id: overviewRow

            section: ShellModel.Overview
            label: Language.text("概览", "Overview")
            iconName: "layout-grid"
        }
        Choice {
            id: scheduleRow

            section: ShellModel.Schedule
            label: Language.text("日程", "Schedule")
            iconName: "calendar"
        }
        Choice {
            id: remindersRow

            section: ShellModel.Reminders
            label: Language.text("待办", "To-dos")
            iconName: "list-checks"
        }
        Choice {
            id: goalsRow

            section: ShellModel.Goals
            label: Language.text("目标", "Goals")
            iconName: "target"
        }
        Caption {
            text: Language.text("文档库", "Library")
            height: 36
        }
        Choice {
            id: documentsRow

            section: ShellModel.Documents
            label: Language.text("文档", "Documents")
            iconName: "file-text"
        }
    }
}

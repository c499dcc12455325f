pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Palette
import Tessaly.Store
import Tessaly.Ui

/// One field that finds what is in the planner and adds to it.
Sheet {
    id: palette

    objectName: "palette"

    /// The record is to be shown on its screen.
    signal recordChosen(section: int, id: string)
    /// See PaletteCommand.
    signal commandChosen(command: int)

    /// What is typed is searched at once, not after a pause.
    function settle() {
        pause.stop();
        finder.text = field.text;
    }

    function showCurrent() {
        const item = rows.itemAt(finder.current) as PaletteItem;
        if (item === null)
            return;
        const top = item.mapToItem(bodyFlickable.contentItem, 0, 0).y;
        const most = Math.max(0, bodyFlickable.contentHeight - bodyFlickable.height);
        const least = top + item.height + 8 - bodyFlickable.height;
        bodyFlickable.contentY = Math.min(most, Math.max(least, Math.min(bodyFlickable.contentY, Math.max(0, top - 8))));
    }

    function choose() {
        settle();
        finder.choose(finder.current);
    }

    function add() {
        settle();
        finder.addReminder();
    }

    function move(by: int) {
        settle();
        finder.move(by);
        showCurrent();
    }

    /// Begins anew although it is still fading out.
    function reopen() {
        dismiss();
        open();
    }

    name: Language.text("查找与添加", "Find and add")
    sheetWidth: 600
    y: 88 + rise
    outerSpace: 136
    headPadding: 0
    sidePadding: 0
    bodyTopPadding: 0
    bodyBottomPadding: 0
    bodySpacing: 0
    footHeight: 37
    closePolicy: T.Popup.CloseOnPressOutside
    initialFocus: field
    onLeaving: close()
    onAboutToShow: {
        field.clear();
        finder.begin();
    }

    head: Item {
        width: parent?.width ?? 0
        height: 55

        Icon {
            x: 18
            y: 18
            size: 18
            name: "search"
            color: Theme.textTertiary
        }

        EntryField {
            id: field

            objectName: "paletteField"

            x: 44
            width: parent.width - x - 14
            height: 54
            font.pixelSize: Theme.greeting.size
            placeholderText: Language.text("查找，或写下要添加的内容", "Find, or write what to add")
            name: Language.text("查找与添加", "Find and add")
            Accessible.role: Accessible.ComboBox
            Accessible.description: (rows.itemAt(finder.current) as PaletteItem)?.Accessible.name ?? ""
            onTextChanged: {
                pause.restart();
                typing.restart();
            }
            Keys.onUpPressed: palette.move(-1)
            Keys.onDownPressed: palette.move(1)
            Keys.onPressed: event => {
                if (inputMethodComposing)
                    return;
                if (event.key === Qt.Key_PageUp)
                    palette.move(-8);
                else if (event.key === Qt.Key_PageDown)
                    palette.move(8);
                else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && event.modifiers & Qt.ControlModifier)
                    palette.add();
                else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                    palette.choose();
                else
                    return;
                event.accepted = true;
            }
        }

        Separator {
            y: 54
            width: parent.width
        }

        // For a screen reader only.
        Item {
            id: news

            property string text

            width: 1
            height: 1
            Accessible.role: Accessible.StatusBar
            Accessible.name: text
            Accessible.ignored: text === ""
        }
    }

    Item {
        width: parent?.width ?? 0
        height: rows.count > 0 ? column.height + 14 : 0

        Column {
            id: column

            x: 8
            y: 6
            width: parent.width - 16

            Repeater {
                id: rows

                model: finder.rows

                PaletteItem {
                    width: column.width
                    isCurrent: index === finder.current
                    onPointed: finder.current = index
                    onChosen: finder.choose(index)
                }
            }
        }
    }

    foot: PaletteFoot {
        width: parent?.width ?? 0
        height: parent?.height ?? 0
        countText: finder.countText
        isAdding: {
            const row = rows.itemAt(finder.current) as PaletteItem;
            return row !== null && (row.kind === PaletteModel.AddScheduleRow || row.kind === PaletteModel.AddReminderRow);
        }
    }

    // The keys of the screens are kept out until the sheet has faded out.
    Shortcut {
        enabled: palette.visible && !palette.isShown
        sequence: Shortcuts.find
        onActivated: palette.reopen()
    }

    PaletteModel {
        id: finder

        store: PlannerStore
        onRecordChosen: (section, id) => {
            palette.dismiss();
            palette.recordChosen(section, id);
        }
        onCommandChosen: command => {
            palette.dismiss();
            palette.commandChosen(command);
        }
        onCurrentChanged: Qt.callLater(palette.showCurrent) // qmllint disable
    }

    Timer {
        id: pause

        interval: 80
        onTriggered: {
            if (!field.inputMethodComposing)
                finder.text = field.text;
        }
    }

    Timer {
        id: typing

        interval: 600
        onTriggered: news.text = finder.countText
    }
}

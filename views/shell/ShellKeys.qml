pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// The keys that work on every screen, except over sheets.
Item {
    id: keys

    required property Item screen
    /// Whether a document is open in the editor.
    required property bool isEditing

    signal sectionChosen(section: int)
    signal settingsRequested
    signal paletteRequested
    signal versionsRequested
    signal shortcutsRequested

    // qmllint disable property
    function startNew() {
        keys.screen?.startNew?.();
    }

    /// The focus goes to what the screen names, else to the first that the Tab key reaches.
    function enterScreen() {
        if (keys.screen?.takeFocus) {
            keys.screen.takeFocus();
            return;
        }
        const first = keys.screen?.nextItemInFocusChain(true) ?? null;
        let outer = first;
        while (outer !== null && outer !== keys.screen)
            outer = outer.parent;
        if (outer !== null)
            first.forceActiveFocus(Qt.TabFocusReason);
    }

    function showToday() {
        keys.screen?.showToday?.();
    }
    // qmllint enable property

    Repeater {
        model: Shortcuts.screens

        Item {
            id: entry

            required property string modelData
            required property int index

            Shortcut {
                sequence: entry.modelData
                onActivated: {
                    keys.sectionChosen(entry.index);
                    if (!keys.isEditing)
                        keys.enterScreen();
                }
            }
        }
    }

    Shortcut {
        sequence: Shortcuts.startNew
        enabled: !keys.isEditing
        onActivated: keys.startNew()
    }
    Shortcut {
        sequence: Shortcuts.today
        enabled: !keys.isEditing
        onActivated: keys.showToday()
    }
    Shortcut {
        sequence: Shortcuts.settings
        onActivated: keys.settingsRequested()
    }
    Shortcut {
        sequence: Shortcuts.find
        onActivated: keys.paletteRequested()
    }
    Shortcut {
        sequence: Shortcuts.versions
        onActivated: keys.versionsRequested()
    }
    Shortcut {
        sequences: [Shortcuts.help, Shortcuts.helpSign]
        onActivated: keys.shortcutsRequested()
    }
}

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
                onActivated: keys.sectionChosen(entry.index)
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

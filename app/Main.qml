import QtQuick
import QtQuick.Controls.Basic
import Tessaly.Dashboard
import Tessaly.Documents
import Tessaly.Goals
import Tessaly.Schedule
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Todos
import Tessaly.Ui
import Tessaly.Versions

/// The window, and the only place that knows all screens.
ApplicationWindow {
    id: window

    required property ShellModel shell
    readonly property alias content: contentView

    /// The program is to end, also where closing the window would leave it running.
    signal quitRequested

    minimumWidth: 920
    minimumHeight: Math.max(620, editor.leastHeight)
    width: 1180
    height: 800
    title: Qt.application.name
    color: Theme.bg
    // For the file dialogs that Qt draws where the desktop has none; all other controls are the planner's own.
    palette {
        window: Theme.raised
        windowText: Theme.text
        light: Theme.raised
        mid: Theme.pressed
        dark: Theme.borderControl
        base: Theme.field
        text: Theme.text
        button: Theme.selected
        buttonText: Theme.text
        brightText: Theme.text
        placeholderText: Theme.textTertiary
        highlight: Theme.accentText
        highlightedText: Theme.text
        midlight: Theme.hover
    }
    // qmllint disable
    locale: Qt.locale(PlannerStore.isEnglish ? "en_US" : "zh_Hans")
    // qmllint enable

    Binding {
        target: Language
        property: "isEnglish"
        value: PlannerStore.isEnglish
    }
    Binding {
        target: Theme
        property: "isDark"
        value: window.shell.isDark
    }
    Binding {
        target: Theme
        property: "isHighContrast"
        value: window.shell.isHighContrast
    }
    Binding {
        target: Theme
        property: "isReducedMotion"
        value: window.shell.hasReducedMotion
    }

    // A window that is opened again shows what a start shows.
    onVisibleChanged: {
        if (visible)
            contentView.reload();
        else
            contentView.unload();
    }

    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut // sheets and the editor keep shortcuts of the window out
        onActivated: window.quitRequested()
    }

    ContentView {
        id: contentView

        anchors.fill: parent
        shell: window.shell
        isEditing: editor.isOpen
        // One line for each row of the sidebar, in its order.
        screens: [
            Component { DashboardView {} },
            Component {
                ScheduleView {
                    onRestorePointRequested: fileName => versions.show(fileName)
                }
            },
            Component { ReminderView {} },
            Component { GoalView {} },
            Component {
                DocumentLibraryView {
                    onEditRequested: documentId => editor.documentId = documentId
                }
            }
        ]
        // Whoever asks for another screen wants to see it.
        onSectionChanged: editor.close()
        onVersionsRequested: versions.show("")
    }

    Loader {
        id: versions

        function show(fileName: string) {
            active = true;
            (item as VersionsSheet).show(fileName);
        }

        active: false
        sourceComponent: VersionsSheet {}
    }

    MarkdownEditorHost {
        id: editor

        property int heightBefore: 0

        anchors.fill: parent
        anchors.leftMargin: Theme.sidebarWidth
        onLeastHeightChanged: {
            if (leastHeight > window.height) {
                heightBefore = window.height;
                window.height = leastHeight;
            } else if (leastHeight === 0 && heightBefore > 0) {
                window.height = heightBefore;
                heightBefore = 0;
            }
        }
    }
}

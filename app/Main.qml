import QtQuick
import QtQuick.Templates as T
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The window, and the only place that knows all screens. It names them by their files: those that the start does not
/// show are read afterwards.
T.ApplicationWindow {
    id: window

    required property ShellModel shell
    readonly property alias content: contentView

    /// The program is to end, also where closing the window would leave it running.
    signal quitRequested

    /// Shows the record on its screen, or the screen where there is no id.
    function reveal(section: int, id: string) {
        editor.close();
        if (id === "")
            contentView.section = section;
        else
            contentView.reveal(section, id);
    }

    /// Commands of the palette, in the order of PaletteCommand.
    function carryOut(command: int) {
        const screens = contentView.screens.length;
        const actions = [() => shell.undo.undo(), () => shell.undo.redo(), () => versions.show(""), () => contentView.showShortcuts = true, () => shell.archive.exportArchive(), () => shell.archive.chooseImport(), () => contentView.showSettings(), () => showSchedule("showToday"), () => showSchedule("showWeek"), () => showSchedule("showMonth"), () => showSchedule("showPlan")];
        if (command < screens) {
            editor.close();
            contentView.section = command;
        } else {
            actions[command - screens]();
        }
    }

    /// Calls a function of the schedule screen.
    function showSchedule(what: string) {
        editor.close();
        contentView.section = ShellModel.Schedule;
        contentView.screen?.[what]?.();
    }

    function showPalette() {
        if (!contentView.hasQuestion)
            palette.show();
    }

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

    // A window that is opened again shows what a start shows.
    onVisibleChanged: {
        if (visible)
            contentView.reload();
        else
            contentView.unload();
    }

    Shortcut {
        sequence: Shortcuts.quit
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
            Qt.resolvedUrl("Dashboard/DashboardView.qml"),
            Qt.resolvedUrl("Schedule/ScheduleView.qml"),
            Qt.resolvedUrl("Todos/ReminderView.qml"),
            Qt.resolvedUrl("Goals/GoalView.qml"),
            Qt.resolvedUrl("Documents/DocumentLibraryView.qml")
        ]
        // Whoever asks for another screen wants to see it.
        onSectionChanged: editor.close()
        onVersionsRequested: versions.show("")
        onPaletteRequested: palette.show()
    }

    // What the screens ask for.
    Connections {
        function onRestorePointRequested(fileName: string) {
            versions.show(fileName);
        }
        function onPlaceRequested(section: int, id: string) {
            // The screen that asks is gone with the next one.
            contentView.forceActiveFocus();
            window.reveal(section, id);
        }
        function onEditRequested(documentId: string) {
            editor.open(documentId);
        }

        target: contentView.screen
        ignoreUnknownSignals: true
    }

    Loader {
        id: versions

        function show(fileName: string) {
            source = "Versions/VersionsSheet.qml";
            // qmllint disable
            item.show(fileName);
            // qmllint enable
        }
    }

    Loader {
        id: palette

        function show() {
            source = "Palette/Palette.qml";
            (item as T.Popup).open();
        }
    }

    Connections {
        function onRecordChosen(section: int, id: string) {
            window.reveal(section, id);
        }
        function onCommandChosen(command: int) {
            window.carryOut(command);
        }

        target: palette.item
    }

    Loader {
        id: editor

        // qmllint disable property
        readonly property bool isOpen: item?.isOpen ?? false
        readonly property int leastHeight: item?.leastHeight ?? 0
        // qmllint enable property
        property int heightBefore: 0

        function open(documentId: string) {
            source = "Documents/MarkdownEditorHost.qml";
            item.documentId = documentId; // qmllint disable property
        }
        function close() {
            item?.close(); // qmllint disable property
        }

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

    // Last in the file, because QML completes them first then: no text is laid out in the other language.
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
}

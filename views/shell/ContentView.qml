pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The window's content: the sidebar and the screen that is chosen there. Each choice makes a fresh screen.
FocusScope {
    id: view

    required property ShellModel shell
    /// The screens' files, in the order of ShellModel.SidebarItem.
    required property list<url> screens

    property int section: ShellModel.Overview
    /// Whether a document is open in the editor: undo then belongs to its text.
    property bool isEditing: false
    property alias showClearConfirmation: clearDialog.isShown
    property alias showNamePrompt: namePrompt.isShown
    property alias showConsent: consentDialog.isShown
    property alias showAbout: aboutDialog.isShown
    property alias showShortcuts: shortcutSheet.isShown
    property alias showUnreadable: unreadableDialog.isShown
    property alias showUnsaved: unsavedDialog.isShown
    /// Whether something has to be answered first.
    readonly property bool hasQuestion: showNamePrompt || showConsent || showUnreadable || showUnsaved
    readonly property Item screen: loader.item as Item

    /// The part of the screen that scrolls, a ScrollPage or a ListPage: every screen has one.
    readonly property Flickable scroller: view.screen?.scroll ?? null // qmllint disable property

    /// The user chose to quit without saving.
    signal quitUnsavedChosen
    /// The user wants to see the earlier versions.
    signal versionsRequested
    /// The user wants to find or add something.
    signal paletteRequested

    /// Shows the record on its screen.
    function reveal(section: int, id: string) {
        view.section = section;
        screen?.reveal?.(id); // qmllint disable property
    }

    function showSettings() {
        sidebar.focusSettings();
    }

    /// Destroys the screen while the window is closed. The next screen is the overview.
    function unload() {
        loader.active = false;
        section = ShellModel.Overview;
    }
    function reload() {
        loader.active = true;
    }

    /// One question at a time.
    function askForCalendars() {
        consentDialog.isShown = PlannerStore.calendarSync.isConsentAwaited && !showNamePrompt && !showUnreadable;
    }

    focus: true
    Keys.onPressed: event => {
        if (scroller !== null)
            Scrolling.press(scroller, event);
    }
    onShowNamePromptChanged: askForCalendars()
    onShowUnreadableChanged: askForCalendars()
    onSectionChanged: {
        // The schedule screen shows it in its status line.
        if (section === ShellModel.Schedule && !toast.isOfUndo)
            toast.hide();
        else if (!toast.isPassing)
            toast.show();
    }
    Component.onCompleted: {
        showNamePrompt = !shell.hasAskedPreferredName;
        showUnreadable = PlannerStore.hadUnreadableData;
        askForCalendars();
    }

    Sidebar {
        id: sidebar

        width: Theme.sidebarWidth
        height: parent.height
        shell: view.shell
        isUndoHeld: view.isEditing
        section: view.section
        onChosen: section => view.section = section
        onClearRequested: view.showClearConfirmation = true
        onAboutRequested: view.showAbout = true
        onVersionsRequested: view.versionsRequested()
        onPaletteRequested: view.paletteRequested()
        onShortcutsRequested: view.showShortcuts = true
        onNotificationPermissionRequested: PlannerStore.requestNotificationPermission()
    }

    Item {
        id: detail

        anchors.left: sidebar.right
        anchors.right: parent.right
        height: parent.height

        Loader {
            id: loader

            anchors.fill: parent
            source: view.screens[view.section]
        }

        Toast {
            id: toast

            /// What was removed or undone comes before the messages of the planner.
            readonly property bool isOfUndo: view.shell.undo.message !== ""

            parent: ToastStage.surface ?? detail
            anchors.horizontalCenter: parent?.horizontalCenter
            anchors.bottom: parent?.bottom
            anchors.bottomMargin: ToastStage.surface === null ? 24 : ToastStage.foot + 12
            message: isOfUndo ? view.shell.undo.message : PlannerStore.calendarSyncMessage
            isFailure: !isOfUndo && PlannerStore.isSyncMessageFailure
            isPassing: isOfUndo || PlannerStore.isSyncMessagePassing
            action: view.shell.undo.isUndoOffered ? Language.text("撤销", "Undo") : ""
            onActionChosen: view.shell.undo.undo()
            onDismissed: {
                const hasWaited = isOfUndo && PlannerStore.calendarSyncMessage !== message;
                view.shell.undo.dismiss();
                if (!hasWaited)
                    PlannerStore.dismissCalendarSyncMessage();
                else if (view.section !== ShellModel.Schedule)
                    show();
            }

            // Here, so that they work over a sheet with the toast and are kept out by the others.
            Shortcut {
                sequence: Shortcuts.undo
                enabled: view.shell.undo.canUndo && !view.isEditing
                onActivated: view.shell.undo.undo()
            }
            Shortcut {
                sequence: Shortcuts.redo
                enabled: view.shell.undo.canRedo && !view.isEditing
                onActivated: view.shell.undo.redo()
            }
        }

        // Above the scroll areas' own margins, so that the toast covers no last row.
        Binding {
            target: ToastStage
            property: "room"
            value: toast.visible && toast.action !== "" ? 60 : 0
        }

        Binding {
            target: view.scroller
            property: "footRoom"
            value: ToastStage.surface === null ? ToastStage.room : 0
        }

        Connections {
            function onReported() {
                toast.show();
            }

            target: view.shell.undo
        }

        Connections {
            function onCalendarSyncMessageReported() {
                if (view.section !== ShellModel.Schedule)
                    toast.show();
            }

            target: PlannerStore
        }
    }

    ShellKeys {
        screen: view.screen
        isEditing: view.isEditing
        onSectionChosen: section => view.section = section
        onSettingsRequested: sidebar.focusSettings()
        onPaletteRequested: view.paletteRequested()
        onVersionsRequested: view.versionsRequested()
        onShortcutsRequested: view.showShortcuts = true
    }

    SheetSlot {
        id: shortcutSheet

        file: Qt.resolvedUrl("ShortcutSheet.qml")
        requirements: ({
                globalShortcut: view.shell.globalShortcut
            })
    }

    SheetSlot {
        id: clearDialog

        file: Qt.resolvedUrl("ClearDialog.qml")
    }

    SheetSlot {
        id: namePrompt

        file: Qt.resolvedUrl("NamePrompt.qml")
        requirements: ({
                shell: view.shell
            })
    }

    SheetSlot {
        id: consentDialog

        file: Qt.resolvedUrl("CalendarConsentDialog.qml")
    }

    Connections {
        function onConsentChanged() {
            view.askForCalendars();
        }

        target: PlannerStore.calendarSync
    }

    SheetSlot {
        id: unreadableDialog

        file: Qt.resolvedUrl("UnreadableDialog.qml")
    }

    SheetSlot {
        id: unsavedDialog

        file: Qt.resolvedUrl("UnsavedDialog.qml")
    }

    Connections {
        function onQuitChosen() {
            view.quitUnsavedChosen();
        }

        target: unsavedDialog.item
    }

    SheetSlot {
        id: importDialog

        file: Qt.resolvedUrl("ImportDialog.qml")
        requirements: ({
                archive: view.shell.archive
            })
    }

    // A binding would end with the first time that the dialog opens.
    Connections {
        function onImportCandidateChanged() {
            importDialog.isShown = view.shell.archive.importCandidate !== "";
        }

        target: view.shell.archive
    }

    SheetSlot {
        id: aboutDialog

        file: Qt.resolvedUrl("AboutDialog.qml")
        requirements: ({
                shell: view.shell
            })
    }
}

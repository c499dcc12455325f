pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The window's content: the sidebar and the screen that is chosen there. Each choice makes a fresh screen.
FocusScope {
    id: view

    required property ShellModel shell
    /// The screens, in the order of ShellModel.SidebarItem.
    required property list<Component> screens

    property int section: ShellModel.Overview
    /// Whether a document is open in the editor: undo then belongs to its text.
    property bool isEditing: false
    property alias showClearConfirmation: clearDialog.isShown
    property alias showNamePrompt: namePrompt.isShown
    property alias showConsent: consentDialog.isShown
    property alias showAbout: aboutDialog.isShown
    property alias showUnreadable: unreadableDialog.isShown
    property alias showUnsaved: unsavedDialog.isShown
    readonly property Item screen: loader.item as Item

    /// The part of the screen that scrolls, a ScrollPage or a ListPage: every screen has one.
    readonly property Flickable scroller: view.screen?.scroll ?? null // qmllint disable property

    /// The user chose to quit without saving.
    signal quitUnsavedChosen
    /// The user wants to see the earlier versions.
    signal versionsRequested

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

    Shortcut {
        sequence: "Ctrl+Z"
        enabled: view.shell.undo.canUndo && !view.isEditing
        onActivated: view.shell.undo.undo()
    }
    Shortcut {
        sequence: "Ctrl+Shift+Z"
        enabled: view.shell.undo.canRedo && !view.isEditing
        onActivated: view.shell.undo.redo()
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
            sourceComponent: view.screens[view.section]
        }

        Toast {
            id: toast

            /// What was removed or undone comes before the messages of the planner.
            readonly property bool isOfUndo: view.shell.undo.message !== ""

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 24
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
        }

        // Above the scroll areas' own margins, so that the toast covers no last row.
        Binding {
            target: view.scroller
            property: "footRoom"
            value: toast.visible && toast.action !== "" ? 60 : 0
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

    ClearDialog {
        id: clearDialog
    }

    NamePrompt {
        id: namePrompt

        shell: view.shell
    }

    CalendarConsentDialog {
        id: consentDialog
    }

    Connections {
        function onConsentChanged() {
            view.askForCalendars();
        }

        target: PlannerStore.calendarSync
    }

    UnreadableDialog {
        id: unreadableDialog
    }

    UnsavedDialog {
        id: unsavedDialog

        onQuitChosen: view.quitUnsavedChosen()
    }

    ImportDialog {
        archive: view.shell.archive
    }

    AboutDialog {
        id: aboutDialog

        shell: view.shell
    }
}

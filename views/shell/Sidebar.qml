import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The column at the window's left: the screens, the menu, the settings.
Rectangle {
    id: sidebar

    required property ShellModel shell
    property alias section: list.section
    /// Whether nothing can be undone for now.
    property bool isUndoHeld: false

    signal chosen(section: int)
    signal clearRequested
    signal aboutRequested
    signal versionsRequested
    signal notificationPermissionRequested

    implicitWidth: Theme.sidebarWidth
    color: Theme.sidebar
    Accessible.role: Accessible.Pane
    Accessible.name: Qt.application.name

    Flickable {
        id: scroll

        anchors.top: parent.top
        anchors.bottom: unsavedLine.visible ? unsavedLine.top : settings.top
        width: parent.width - edge.width
        clip: true
        contentHeight: list.y + list.height + 10
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        SidebarList {
            id: list

            x: 10
            y: 20
            width: scroll.width - 20
            focus: true
            onChosen: section => sidebar.chosen(section)
        }

        IconButton {
            id: menuButton

            x: scroll.width - width - 8
            y: 12
            width: Theme.smallControlHeight
            height: Theme.smallControlHeight
            iconName: "ellipsis"
            text: Language.text("菜单", "Menu")
            popup: menu
            onClicked: menu.popup(menuButton, 0, menuButton.height + 4)

            AppMenu {
                id: menu

                title: menuButton.text

                AppMenuItem {
                    // lint-allow(text): the menu's commands are in one language each, on purpose
                    text: "About Tessaly"
                    onTriggered: sidebar.aboutRequested()
                }
                AppMenuItem {
                    // lint-allow(text): the menu's commands are in one language each, on purpose
                    text: "请求通知权限"
                    onTriggered: sidebar.notificationPermissionRequested()
                }
                AppMenuItem {
                    text: Language.text("导出…", "Export…")
                    onTriggered: sidebar.shell.archive.exportArchive()
                }
                AppMenuItem {
                    text: Language.text("导入…", "Import…")
                    onTriggered: sidebar.shell.archive.chooseImport()
                }
                AppMenuHeading {
                    text: Language.text("编辑", "Edit")
                }
                AppMenuItem {
                    text: sidebar.shell.undo.undoText
                    keys: "Ctrl+Z"
                    enabled: sidebar.shell.undo.canUndo && !sidebar.isUndoHeld
                    onTriggered: sidebar.shell.undo.undo()
                }
                AppMenuItem {
                    text: sidebar.shell.undo.redoText
                    keys: "Ctrl+Shift+Z"
                    enabled: sidebar.shell.undo.canRedo && !sidebar.isUndoHeld
                    onTriggered: sidebar.shell.undo.redo()
                }
                AppMenuItem {
                    text: Language.text("历史版本…", "Earlier versions…")
                    onTriggered: sidebar.versionsRequested()
                }
            }
        }
    }

    StatusLine {
        id: unsavedLine

        x: 20
        width: parent.width - edge.width - 2 * x
        anchors.bottom: settings.top
        anchors.bottomMargin: 10
        message: PlannerStore.hasUnsavedChanges ? Language.text("有更改尚未保存", "Some changes are not saved") : ""
        visible: message !== ""
    }

    SettingsPanel {
        id: settings

        anchors.bottom: parent.bottom
        width: parent.width - edge.width
        shell: sidebar.shell
        onClearRequested: sidebar.clearRequested()
    }

    Rectangle {
        id: edge

        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.border
    }
}

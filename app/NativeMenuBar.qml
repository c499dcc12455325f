import QtQuick
import Qt.labs.platform as Native
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The menu commands in the menu bar that the desktop shows outside the window. Only loaded where there is one.
Native.MenuBar {
    id: menuBar

    required property ContentView content

    Native.Menu {
        title: Qt.application.name

        Native.MenuItem {
            // lint-allow(text): the menu's commands are in one language each, on purpose
            text: "About Tessaly"
            role: Native.MenuItem.AboutRole
            onTriggered: menuBar.content.showAbout = true
        }
    }

    Native.Menu {
        title: Language.text("文件", "File")

        Native.MenuItem {
            text: Language.text("历史版本…", "Earlier versions…")
            onTriggered: menuBar.content.versionsRequested()
        }

        Native.MenuItem {
            // lint-allow(text): the menu's commands are in one language each, on purpose
            text: "请求通知权限"
            onTriggered: PlannerStore.requestNotificationPermission()
        }
        Native.MenuItem {
            text: Language.text("导出…", "Export…")
            onTriggered: menuBar.content.shell.archive.exportArchive()
        }
        Native.MenuItem {
            text: Language.text("导入…", "Import…")
            onTriggered: menuBar.content.shell.archive.chooseImport()
        }
    }

    // Without keys: those of the window belong to a text field first.
    Native.Menu {
        title: Language.text("编辑", "Edit")

        Native.MenuItem {
            text: menuBar.content.shell.undo.undoText
            enabled: menuBar.content.shell.undo.canUndo && !menuBar.content.isEditing
            onTriggered: menuBar.content.shell.undo.undo()
        }
        Native.MenuItem {
            text: menuBar.content.shell.undo.redoText
            enabled: menuBar.content.shell.undo.canRedo && !menuBar.content.isEditing
            onTriggered: menuBar.content.shell.undo.redo()
        }
        Native.MenuItem {
            text: Language.text("查找与添加…", "Find and add…")
            onTriggered: menuBar.content.paletteRequested()
        }
        Native.MenuItem {
            text: Language.text("键盘快捷键", "Keyboard shortcuts")
            onTriggered: menuBar.content.showShortcuts = true
        }
    }
}

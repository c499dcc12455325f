import Tessaly.Shell
import Tessaly.Ui

/// The menu commands.
AppMenu {
    id: menu

    required property Sidebar sidebar

    title: Language.text("菜单", "Menu")

    AppMenuItem {
        // lint-allow(text): the menu's commands are in one language each, on purpose
        text: "About Tessaly"
        onTriggered: menu.sidebar.aboutRequested()
    }
    AppMenuItem {
        // lint-allow(text): the menu's commands are in one language each, on purpose
        text: "请求通知权限"
        onTriggered: menu.sidebar.notificationPermissionRequested()
    }
    AppMenuItem {
        text: Language.text("导出…", "Export…")
        onTriggered: menu.sidebar.shell.archive.exportArchive()
    }
    AppMenuItem {
        text: Language.text("导入…", "Import…")
        onTriggered: menu.sidebar.shell.archive.chooseImport()
    }
    AppMenuHeading {
        text: Language.text("编辑", "Edit")
    }
    AppMenuItem {
        text: menu.sidebar.shell.undo.undoText
        keys: Shortcuts.undo
        enabled: menu.sidebar.shell.undo.canUndo && !menu.sidebar.isUndoHeld
        onTriggered: menu.sidebar.shell.undo.undo()
    }
    AppMenuItem {
        text: menu.sidebar.shell.undo.redoText
        keys: Shortcuts.redo
        enabled: menu.sidebar.shell.undo.canRedo && !menu.sidebar.isUndoHeld
        onTriggered: menu.sidebar.shell.undo.redo()
    }
    AppMenuItem {
        text: Language.text("查找与添加…", "Find and add…")
        keys: Shortcuts.find
        onTriggered: menu.sidebar.paletteRequested()
    }
    AppMenuItem {
        text: Language.text("历史版本…", "Earlier versions…")
        keys: Shortcuts.versions
        onTriggered: menu.sidebar.versionsRequested()
    }
    AppMenuItem {
        text: Language.text("键盘快捷键", "Keyboard shortcuts")
        keys: Shortcuts.help
        onTriggered: menu.sidebar.shortcutsRequested()
    }
}

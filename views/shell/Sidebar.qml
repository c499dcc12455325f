import QtQuick
import QtQuick.Templates as T
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
    signal paletteRequested
    signal shortcutsRequested
    signal notificationPermissionRequested

    function focusSettings() {
        settings.focusName();
    }

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
            x: menuButton.x - width - 2
            y: menuButton.y
            width: Theme.smallControlHeight
            height: Theme.smallControlHeight
            iconName: "search"
            text: Language.text("查找与添加", "Find and add")
            onClicked: sidebar.paletteRequested()
        }

        IconButton {
            id: menuButton

            x: scroll.width - width - 8
            y: 12
            width: Theme.smallControlHeight
            height: Theme.smallControlHeight
            iconName: "ellipsis"
            text: Language.text("菜单", "Menu")
            popup: menu.item as T.Menu
            onClicked: menu.open()

            // Made when it is wanted.
            Loader {
                id: menu

                function open() {
                    if (status === Loader.Null)
                        setSource("SidebarMenu.qml", {
                            sidebar: sidebar
                        });
                    (item as T.Menu).popup(menuButton, 0, menuButton.height + 4);
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

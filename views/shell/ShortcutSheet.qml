pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// All keys of the planner, as Shortcuts defines them.
Sheet {
    id: sheet

    /// A key for every program; null where there is none.
    property GlobalShortcutModel globalShortcut: null

    objectName: "shortcuts"

    /// The groups of a column: the longest one fills the first, the others the second.
    readonly property var groups: Shortcuts.groups()
    readonly property bool isNarrow: (parent?.width ?? 0) < 780

    title: Language.text("键盘快捷键", "Keyboard shortcuts")
    sheetWidth: isNarrow ? 400 : 720
    primaryButton: doneButton
    onLeaving: close()

    component Group: Column {
        id: group

        required property var modelData

        width: parent?.width ?? 0

        AppText {
            height: 28
            text: group.modelData.title
            token: Theme.captionBold
            color: Theme.textSecondary
            Accessible.role: Accessible.Heading
        }

        Repeater {
            id: lines

            model: group.modelData.rows

            ShortcutLine {
                required property var modelData
                required property int index

                width: group.width
                name: modelData.name
                keys: modelData.keys
                between: modelData.between
                isLast: index === lines.count - 1
            }
        }
    }

    onAboutToShow: globalShortcut?.look()

    foot: [
        Toggle {
            anchors.verticalCenter: parent?.verticalCenter
            visible: sheet.globalShortcut?.isOffered ?? false
            text: {
                const name = Language.text("在任何程序中查找与添加", "Find and add from any program");
                return (sheet.globalShortcut?.keys ?? "") === "" ? name : name + " · " + sheet.globalShortcut.keys;
            }
            checked: sheet.globalShortcut?.isOn ?? false
            onToggled: sheet.globalShortcut.isOn = checked
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: Language.text("完成", "Done")
            onClicked: sheet.close()
        }
    ]

    Grid {
        id: grid

        readonly property real columnWidth: sheet.isNarrow ? width : (width - columnSpacing) / 2

        width: parent?.width ?? 0
        columns: sheet.isNarrow ? 1 : 2
        columnSpacing: 40
        rowSpacing: 12

        Column {
            width: grid.columnWidth
            spacing: 12

            Repeater {
                model: sheet.groups.slice(0, 1)

                Group {}
            }
        }

        Column {
            width: grid.columnWidth
            spacing: 12

            Repeater {
                model: sheet.groups.slice(1)

                Group {}
            }
        }
    }
}

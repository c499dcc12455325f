import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// Name, language, appearance, launch at login, clearing and the version, at the sidebar's foot.
Item {
    id: panel

    required property ShellModel shell
    readonly property list<string> modes: ["system", "light", "dark"]

    signal clearRequested

    function focusName() {
        nameField.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    implicitHeight: rows.y + rows.implicitHeight + 16

    component Row: Item {
        id: row

        property string label
        default property alias control: holder.data

        width: parent?.width ?? 0
        implicitHeight: Theme.smallControlHeight

        AppText {
            x: 6
            width: 74
            anchors.verticalCenter: parent.verticalCenter
            text: row.label
            visible: text !== ""
            token: Theme.caption
            color: Theme.textSecondary
        }

        Item {
            id: holder

            x: 80
            width: parent.width - x
            height: parent.height
        }
    }

    Separator {
        width: parent.width
    }

    Column {
        id: rows

        x: 14
        y: 15
        width: panel.width - 28
        spacing: 8

        AppText {
            leftPadding: 6
            height: 18
            text: Language.text("设置", "Settings")
            token: Theme.captionBold
            color: Theme.textTertiary
            Accessible.role: Accessible.Heading
        }
        Row {
            label: Language.text("称呼", "Name")

            AppTextField {
                id: nameField

                anchors.fill: parent
                isSmall: true
                text: PlannerStore.preferredName
                Accessible.name: Language.text("称呼", "Name")
                onTextEdited: PlannerStore.preferredName = text
            }
        }
        Row {
            label: Language.text("语言", "Language")

            SettingsChoice {
                anchors.fill: parent
                name: Language.text("语言", "Language")
                labels: ["中文", "English"]
                index: PlannerStore.isEnglish ? 1 : 0
                onChosen: index => PlannerStore.interfaceLanguage = index === 1 ? Planner.English : Planner.Chinese
            }
        }
        Row {
            label: Language.text("外观", "Appearance")

            SettingsChoice {
                anchors.fill: parent
                name: Language.text("外观", "Appearance")
                labels: [Language.text("跟随系统", "System"), Language.text("浅色", "Light"), Language.text("深色", "Dark")]
                index: Math.max(0, panel.modes.indexOf(panel.shell.appearanceMode))
                onChosen: index => panel.shell.appearanceMode = panel.modes[index]
            }
        }
        Row {
            label: Language.text("启动", "Startup")

            SettingsChoice {
                anchors.fill: parent
                name: Language.text("启动", "Startup")
                labels: [Language.text("开机启动", "Launch at login"), Language.text("关闭", "Off")]
                index: PlannerStore.launchAtLogin ? 0 : 1
                onChosen: index => PlannerStore.setLaunchAtLogin(index === 0)
            }
        }
        Row {
            AppButton {
                anchors.fill: parent
                isSmall: true
                text: Language.text("清空", "Clear")
                onClicked: panel.clearRequested()
            }
        }
        Item {
            width: rows.width
            implicitHeight: 18

            AppText {
                x: 6
                text: Language.text("版本号", "Version")
                token: Theme.caption
                color: Theme.textTertiary
            }

            AppText {
                x: 90
                text: panel.shell.versionAndBuild
                token: Theme.caption
                color: Theme.textTertiary
            }
        }
    }
}

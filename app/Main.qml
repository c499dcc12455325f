import QtQuick
import QtQuick.Controls.Basic
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

ApplicationWindow {
    id: window

    required property ShellModel shell
    readonly property alias content: contentView

    minimumWidth: 920
    minimumHeight: 620
    width: 1180
    height: 800
    title: Qt.application.displayName
    color: Theme.bg
    locale: Qt.locale(PlannerStore.isEnglish ? "en_US" : "zh_Hans")

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

    ContentView {
        id: contentView
        anchors.fill: parent
    }
}

import QtQuick
import QtQuick.Window
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

Window {
    minimumWidth: 920
    minimumHeight: 620
    width: 1180
    height: 800
    visible: true
    title: Qt.application.displayName

    Binding {
        target: Language
        property: "isEnglish"
        value: PlannerStore.isEnglish
    }

    ContentView {
        anchors.fill: parent
    }
}

import QtQuick
import Tessaly.Store
import Tessaly.Ui

Rectangle {
    color: Theme.bg

    Text {
        anchors.centerIn: parent
        text: Language.text("概览", "Overview") + PlannerStore.preferredName + (PlannerStore.interfaceLanguage === Planner.English)
    }
}

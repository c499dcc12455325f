import QtQuick
import Tessaly.Ui

/// Stands in for the list of calendars until there is one.
Rectangle {
    id: box

    implicitHeight: 108
    radius: Theme.popupRadius
    color: Theme.field
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.Indicator
    Accessible.name: label.text

    Row {
        anchors.centerIn: parent
        spacing: 10

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
        }

        AppText {
            id: label

            text: Language.text("正在读取日历…", "Loading calendars…")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }
}

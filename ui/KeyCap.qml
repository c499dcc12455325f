import QtQuick
import Tessaly.Ui

/// A key of the keyboard.
Rectangle {
    id: cap

    required property string text
    property bool isSmall: false

    implicitWidth: Math.max(22, label.implicitWidth + 12)
    implicitHeight: isSmall ? 20 : 22
    radius: 5
    color: Theme.inset
    border.width: 1
    border.color: Theme.borderControl
    transform: PixelSnap {}

    LineText {
        id: label

        anchors.centerIn: parent
        text: cap.text
        token: Theme.captionMedium
        color: Theme.textSecondary
        Accessible.ignored: true
    }
}

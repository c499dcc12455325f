import QtQuick
import Tessaly.Ui

/// What was understood in a text, as a button that takes it over.
PushButton {
    id: chip

    property real mostWidth: 400

    implicitWidth: Math.min(mostWidth, contentItem.implicitWidth + 20)
    implicitHeight: 24
    leftPadding: 10
    rightPadding: 10
    Accessible.name: Language.text("采用“%1”", "Use “%1”").arg(text)
    Accessible.description: tip.text

    PressGuard {
        anchors.fill: parent
    }

    background: Rectangle {
        radius: 12
        color: Theme.accentSoft
        border.width: chip.hovered ? 1 : 0
        border.color: Theme.accentText

        FocusRing {
            visible: chip.visualFocus
            gap: 1
            targetRadius: 12
        }
    }

    contentItem: AppText {
        id: label

        text: chip.text
        // The end of the time counts as much as the day.
        elide: Text.ElideMiddle
        token: Theme.captionMedium
        color: Theme.accentText
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    AppToolTip {
        id: tip

        visible: chip.hovered
        text: label.truncated ? Language.text("%1（Enter 采用，Esc 保留原文）", "%1 (Enter uses it, Esc keeps the text as it is)").arg(chip.text) : Language.text("Enter 采用，Esc 保留原文", "Enter uses it, Esc keeps the text as it is")
    }
}

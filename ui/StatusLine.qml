import QtQuick

/// An icon and a message; announced politely when it changes.
Item {
    id: line

    property string message
    property TypeToken token: Theme.caption
    property color ink: Theme.textSecondary

    implicitWidth: 14 + 8 + label.implicitWidth
    implicitHeight: 18
    Accessible.role: Accessible.StatusBar
    Accessible.name: message

    Icon {
        anchors.verticalCenter: parent.verticalCenter
        name: "info"
        size: 14
        color: Theme.textTertiary
    }

    AppText {
        id: label

        x: 22
        width: parent.width - 22
        anchors.verticalCenter: parent.verticalCenter
        text: line.message
        token: line.token
        color: line.ink
        Accessible.ignored: true

        HoverHandler {
            id: hover
        }

        AppToolTip {
            text: line.message
            visible: hover.hovered && label.truncated
        }
    }
}

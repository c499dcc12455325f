import QtQuick

/// An icon and a message, on one line or on up to `lineLimit`; announced politely when it changes.
Item {
    id: line

    property string message
    property TypeToken token: Theme.caption
    property color ink: Theme.textSecondary
    property int lineLimit: 1

    implicitWidth: label.x + Math.ceil(label.implicitWidth)
    implicitHeight: lineLimit > 1 ? label.implicitHeight : 18
    Accessible.role: Accessible.StatusBar
    Accessible.name: message

    Icon {
        y: (Math.min(line.token.line, line.height) - height) / 2
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
        isMultiline: line.lineLimit > 1
        maximumLineCount: line.lineLimit
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

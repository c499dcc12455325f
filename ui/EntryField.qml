import QtQuick

/// The bare one-line text of an entry card; the card shows the focus. A click on the card around it counts as its own.
AppTextField {
    id: field

    leftPadding: 4
    rightPadding: 4
    font.pixelSize: Theme.entry.size
    background: null

    MouseArea {
        id: surroundings

        z: -1
        anchors.fill: parent
        anchors.margins: -15
        cursorShape: Qt.IBeamCursor
        onPressed: event => {
            field.forceActiveFocus(Qt.MouseFocusReason);
            field.cursorPosition = field.positionAt(event.x + surroundings.x, field.height / 2);
        }
    }
}

import QtQuick
import Tessaly.Ui

/// What can be ticked off in a note.
Item {
    id: row

    required property string title
    required property bool isComplete

    signal toggled

    height: Math.max(30, text.height + 8)

    CompletionCircle {
        x: -5
        y: 1
        isComplete: row.isComplete
        itemTitle: row.title
        onClicked: row.toggled()
    }

    AppText {
        id: text

        x: 28
        y: 4
        width: parent.width - x
        isMultiline: true
        text: row.title
        color: row.isComplete ? Theme.textTertiary : Theme.text
        Accessible.ignored: true
    }
}

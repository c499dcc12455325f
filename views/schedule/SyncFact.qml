import QtQuick
import Tessaly.Ui

/// A label, what is to be said of it, and what can be done about it.
Item {
    id: fact

    required property string label
    required property string value
    default property alias actions: place.data
    property real labelWidth: 80
    readonly property real neededLabelWidth: name.implicitWidth + 12

    width: parent?.width ?? 0
    height: Math.max(26, text.height)

    AppText {
        id: name

        width: fact.labelWidth
        height: 26
        text: fact.label
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    AppText {
        id: text

        x: fact.labelWidth
        y: lineCount > 1 ? 0 : (26 - height) / 2
        width: parent.width - x - place.width
        isMultiline: true
        text: fact.value
        token: Theme.control
        Accessible.name: fact.label + ": " + fact.value
    }

    Row {
        id: place

        anchors.right: parent.right
    }
}

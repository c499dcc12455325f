import QtQuick
import Tessaly.Ui

/// A label and a value beside it, or what stands in the value's place.
Item {
    id: detail

    required property string label
    property string value
    default property alias content: place.data

    width: parent?.width ?? 0
    height: Math.max(22, text.text === "" ? place.childrenRect.height - 4 : text.height)

    AppText {
        width: 64
        height: 22
        text: detail.label
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    AppText {
        id: text

        x: 80
        width: parent.width - x
        isMultiline: true
        text: detail.value
        Accessible.ignored: true
    }

    Item {
        id: place

        x: 80
        width: parent.width - x
        height: childrenRect.height
    }
}

import QtQuick
import Tessaly.Ui

/// A label column and a field column.
Item {
    id: row

    required property string label
    default property alias field: column.data

    width: parent?.width ?? 0
    height: Math.max(column.height, labelText.height + 6)

    AppText {
        id: labelText

        y: 6
        width: 104
        isMultiline: true
        text: row.label
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    Item {
        id: column

        x: 116
        width: parent.width - x
        height: childrenRect.height
    }
}

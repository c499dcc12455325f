import QtQuick
import Tessaly.Documents
import Tessaly.Ui

/// A line of the comparison: green with a plus where it would be added, red with a minus where it would be removed.
Rectangle {
    id: row

    required property string text
    required property int kind
    required property bool isFolded
    readonly property color ink: kind === DocumentVersionsModel.Added ? Theme.success : kind === DocumentVersionsModel.Removed ? Theme.destructive : Theme.text
    readonly property string words: kind === DocumentVersionsModel.Added ? Language.text("加入", "Added") : kind === DocumentVersionsModel.Removed ? Language.text("去掉", "Removed") : ""

    implicitHeight: label.height + 4
    color: kind === DocumentVersionsModel.Same ? Theme.transparent : Theme.tint(ink, 0.12)
    Accessible.role: Accessible.ListItem
    Accessible.name: words === "" ? text : words + ", " + text

    Icon {
        x: 6
        y: 5
        visible: row.kind !== DocumentVersionsModel.Same
        size: 12
        name: row.kind === DocumentVersionsModel.Added ? "plus" : "minus"
        color: row.ink
    }

    AppText {
        id: label

        x: 26
        y: 2
        width: parent.width - x - 8
        text: row.text
        token: row.isFolded ? Theme.caption : Theme.control
        color: row.isFolded ? Theme.textSecondary : row.ink
        isMultiline: true
        Accessible.ignored: true
    }
}

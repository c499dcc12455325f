import QtQuick
import Tessaly.Ui

/// Edit and Delete in columns that line up over a whole card, after the column of the handle.
RowActions {
    readonly property real handleX: x - 24

    x: parent.width - 11 - width
    spacing: 0
    editColumn: Language.isEnglish ? 48 : 40
    deleteColumn: Language.isEnglish ? 54 : 40
}

import QtQuick
import Tessaly.Ui

/// The fixed columns of handle, Edit and Delete that line up over a whole card.
QtObject {
    required property real cardWidth

    readonly property real editWidth: Language.isEnglish ? 48 : 40
    readonly property real deleteWidth: Language.isEnglish ? 54 : 40
    readonly property real handleWidth: 24
    readonly property real deleteX: cardWidth - 11 - deleteWidth
    readonly property real editX: deleteX - editWidth
    readonly property real handleX: editX - handleWidth
}

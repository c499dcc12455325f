import QtQuick
import Tessaly.Ui

/// What a day is in the calendar of China, in fewer words where there is little room. A tooltip says all of it.
Item {
    id: area

    required property string note
    required property string narrowNote
    required property string explanation
    property bool isSpecial: false
    property int alignment: Text.AlignRight

    TextMetrics {
        id: whole

        font: label.font
        text: area.note
    }

    LineText {
        id: label

        anchors.fill: parent
        // A scrap of it says nothing.
        visible: implicitWidth <= width || width >= 44
        horizontalAlignment: area.alignment
        text: Math.ceil(whole.advanceWidth) <= area.width ? area.note : area.narrowNote
        color: area.isSpecial ? Theme.textSecondary : Theme.textTertiary
        token: Theme.mini
    }

    TipSlot {
        text: area.explanation
        isShown: hover.hovered

        HoverHandler {
            id: hover
        }
    }
}

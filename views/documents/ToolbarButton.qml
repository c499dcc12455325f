import QtQuick
import QtQuick.Layouts
import Tessaly.Ui

/// A button with an icon; where it is narrow its words are in the tooltip.
AppButton {
    id: button

    required property string label
    required property bool isNarrow

    Layout.preferredWidth: isNarrow ? Theme.controlHeight : implicitWidth
    text: isNarrow ? "" : label
    Accessible.name: label

    ButtonTip {
        button: button
        text: button.label
        isNeeded: button.isNarrow
    }
}

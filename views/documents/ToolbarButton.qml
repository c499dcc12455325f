import QtQuick
import QtQuick.Layouts
import Tessaly.Ui

/// A button with an icon. In a narrow toolbar its text is in the tooltip.
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

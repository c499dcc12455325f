import QtQuick
import QtQuick.Templates as T

/// The tooltip of a button. Whoever has pressed the button knows it: it goes, until the pointer and the focus come back.
AppToolTip {
    id: tip

    required property T.AbstractButton button
    /// What the button opens, if anything: the tooltip must not cover it.
    property T.Popup popup: null
    property bool isNeeded: true
    property bool isSpent: false

    readonly property bool isAsked: button.hovered || button.visualFocus

    onIsAskedChanged: if (!isAsked)
        isSpent = false
    visible: isNeeded && isAsked && !isSpent && popup?.visible !== true

    Connections {
        function onPressed() {
            tip.isSpent = true;
        }
        function onClicked() {
            tip.isSpent = true;
        }

        target: tip.button
    }
}

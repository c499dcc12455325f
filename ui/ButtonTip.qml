import QtQuick
import QtQuick.Templates as T

/// The tooltip of a button. Pressing the button hides it until the pointer or the focus leaves and returns.
TipSlot {
    id: tip

    required property T.AbstractButton button
    /// What the button opens, if anything: the tooltip must not cover it.
    property T.Popup popup: null
    property bool isNeeded: true
    property bool isSpent: false

    readonly property bool isAsked: button.hovered || button.visualFocus

    onIsAskedChanged: if (!isAsked)
        isSpent = false
    isShown: isNeeded && isAsked && !isSpent && popup?.visible !== true

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

import QtQuick
import QtQuick.Templates as T

/// A popup that fades in while it rises a little to `restY`, and fades out. `name` is for assistive technology. A click
/// outside closes it and presses nothing else.
T.Popup {
    id: popup

    property string name
    property real restY: 0
    /// Distance to its final position while it rises.
    property real rise: 0

    y: restY + rise
    modal: true
    dim: false

    PopupName {
        popup: popup
        name: popup.name
    }

    background: PopupFrame {}

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.popupIn
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "rise"
            from: Theme.popupRise
            to: 0
            duration: Theme.popupIn
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.popupOut
            easing.type: Easing.InQuad
        }
    }
}

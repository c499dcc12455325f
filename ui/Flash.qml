import QtQuick

/// A tint that shows for a moment: there is something new.
Rectangle {
    id: tint

    signal faded

    function start() {
        fading.restart();
    }

    color: Theme.accentSoft
    opacity: 0

    NumberAnimation {
        id: fading

        target: tint
        property: "opacity"
        from: 1
        to: 0
        duration: Theme.flash
        easing.type: Easing.InQuad
        onFinished: tint.faded()
    }
}

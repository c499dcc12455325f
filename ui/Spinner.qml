import QtQuick

/// The loading indicator. It does not turn with reduced motion or while hidden.
Icon {
    id: spinner

    name: "loader-circle"

    RotationAnimator on rotation {
        from: 0
        to: 360
        duration: Theme.turn
        loops: Animation.Infinite
        running: spinner.visible && !Theme.isReducedMotion
    }
}

import QtQuick

/// The turning sign of something that is being fetched. It stands still with reduced motion and while it is hidden.
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

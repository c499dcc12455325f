import QtQuick

/// The content item of a sheet. It handles Return and Esc if the focused item does not use them.
FocusScope {
    id: surface

    property AppButton primaryButton: null

    signal leaving

    function returnPressed(event: KeyEvent) {
        event.accepted = event.isAutoRepeat || pressPrimary();
    }

    /// False when there is no such button.
    function pressPrimary(): bool {
        if (primaryButton?.enabled)
            primaryButton.clicked();
        return primaryButton !== null;
    }

    Keys.onEscapePressed: surface.leaving()
    Keys.onReturnPressed: event => surface.returnPressed(event)
    Keys.onEnterPressed: event => surface.returnPressed(event)
}

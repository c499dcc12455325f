import QtQuick

/// What a sheet's items stand on. Return and Esc arrive here when the item with the focus has no use for them.
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

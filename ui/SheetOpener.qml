import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Ui

/// What had the focus when a sheet opened, and gets it back.
QtObject {
    id: opener

    required property T.Popup sheet
    property Item item: null
    /// What got the focus with the sheet.
    property Item entered: null
    property bool isAwaited: false
    property int reason: Qt.MouseFocusReason

    /// It no longer exists. It would have got the focus back with that reason.
    signal gone(int reason)

    function focusItem(): Item {
        return sheet.parent?.Window.activeFocusItem ?? null;
    }

    function remember() {
        item = focusItem();
        isAwaited = item !== null;
        reason = FocusHandover.reasonAfter(item);
    }

    function noteEntered() {
        entered = focusItem();
    }

    /// Whether something else in the sheet has the focus by now.
    function hasMovedOn(): bool {
        const now = focusItem();
        const whole = sheet.contentItem.parent;
        if (entered === null || now === entered || now === whole)
            return false;
        let around = now;
        while (around !== null && around !== whole)
            around = around.parent;
        return around !== null;
    }

    function restore() {
        entered = null;
        if (item?.visible)
            FocusHandover.give(item, reason);
        else if (isAwaited && item === null)
            gone(reason);
        item = null;
        isAwaited = false;
    }
}

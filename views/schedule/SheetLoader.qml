import QtQuick
import Tessaly.Ui

/// Makes a sheet when it is first opened and keeps it.
Loader {
    id: loader

    required property bool isOpen

    active: false
    onIsOpenChanged: {
        if (isOpen)
            active = true;
        const sheet = item as Sheet;
        if (sheet === null)
            return;
        if (isOpen)
            sheet.open();
        else
            sheet.close();
    }
}

import QtQuick

/// The bare one-line text of an entry card; the card shows the focus.
AppTextField {
    leftPadding: 4
    rightPadding: 4
    font.pixelSize: Theme.entry.size
    background: null
}

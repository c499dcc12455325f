import QtQuick
import Tessaly.Ui

/// A choice in the settings panel. It always shows `index`: what the user picks counts only once `index` says so.
AppComboBox {
    id: choice

    required property var labels
    required property int index

    signal chosen(index: int)

    function showIndex() {
        currentIndex = Qt.binding(() => choice.index);
    }

    isSmall: true
    model: labels
    currentIndex: index
    onModelChanged: showIndex()
    onActivated: picked => {
        choice.chosen(picked);
        showIndex();
    }
}

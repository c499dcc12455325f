import QtQuick
import Tessaly.Ui

/// A choice with what it does beneath.
Column {
    id: option

    required property string text
    required property string hint
    required property bool isOn

    signal chosen(isOn: bool)

    spacing: 4

    Toggle {
        height: 20
        text: option.text
        checked: option.isOn
        Accessible.description: option.hint
        onToggled: {
            option.chosen(checked);
            checked = Qt.binding(() => option.isOn);
        }
    }

    AppText {
        x: 44
        width: parent.width - x
        isMultiline: true
        text: option.hint
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }
}

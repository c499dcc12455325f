import QtQuick
import Tessaly.Ui

/// How a to-do repeats, and when it would be due the next time. What does not fit in a line stands below.
Flow {
    id: picker

    // A list of texts that C++ makes is none of QML's for qmllint 6.4.
    required property var options
    /// A row of the options, the first for never.
    required property int repetition
    required property bool isAfterCompletion
    required property string nextDateText
    /// The to-do, where others with the same fields may be shown; for assistive technology.
    property string owner

    readonly property bool isListShown: choice.popup.visible
    /// Between the parts of a line, not between the lines.
    readonly property real gap: 16

    signal repetitionChosen(int repetition)
    signal afterCompletionChosen(bool isAfterCompletion)
    /// Ctrl+Return was pressed in the choice.
    signal finished

    function nameOf(field: string): string {
        return owner === "" ? field : field + ", " + owner;
    }

    Row {
        spacing: 8
        rightPadding: picker.gap
        height: Theme.controlHeight

        AppText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("重复", "Repeat")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        AppComboBox {
            id: choice

            width: 150
            name: picker.nameOf(label.text)
            model: picker.options
            currentIndex: picker.repetition
            // A list in another language resets it.
            onModelChanged: currentIndex = Qt.binding(() => picker.repetition)
            onActivated: index => {
                picker.repetitionChosen(index);
                currentIndex = Qt.binding(() => picker.repetition);
            }
            Keys.onPressed: event => {
                const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
                if (!isReturn || !(event.modifiers & Qt.ControlModifier))
                    return;
                event.accepted = true;
                picker.finished();
            }
        }
    }

    AppCheckBox {
        height: Theme.controlHeight
        rightPadding: picker.gap
        visible: picker.repetition > 0
        text: Language.text("从完成当天算起", "After completion")
        checked: picker.isAfterCompletion
        Accessible.name: picker.nameOf(text)
        onToggled: picker.afterCompletionChosen(checked)
    }

    AppText {
        height: Theme.controlHeight
        visible: picker.nextDateText !== ""
        text: Language.text("下次：%1", "Next: %1").arg(picker.nextDateText)
        token: Theme.caption
        color: Theme.textSecondary
    }
}

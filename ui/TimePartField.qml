import QtQuick

/// Two digits of a time. Up and Down ask for a change by one.
AppTextField {
    id: field

    required property int number
    required property int most
    /// Name for assistive technology.
    required property string name

    signal entered(int number)
    signal stepped(int delta)

    implicitWidth: 48
    isSmall: true
    horizontalAlignment: TextInput.AlignHCenter
    maximumLength: 2
    inputMethodHints: Qt.ImhDigitsOnly
    validator: IntValidator {
        bottom: 0
        top: field.most
    }
    text: number.toString().padStart(2, "0")
    Keys.onUpPressed: stepped(1)
    Keys.onDownPressed: stepped(-1)
    onTextEdited: if (acceptableInput)
        entered(parseInt(text))
    onActiveFocusChanged: {
        if (activeFocus)
            selectAll();
        else
            text = Qt.binding(() => number.toString().padStart(2, "0"));
    }
    Accessible.name: name
}

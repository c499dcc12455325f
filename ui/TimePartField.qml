import QtQuick

/// Two digits of a time. Up and Down change them by one and wrap around.
AppTextField {
    id: field

    required property int number
    required property int most

    signal entered(int number)

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
    Keys.onUpPressed: entered((number + 1) % (most + 1))
    Keys.onDownPressed: entered((number + most) % (most + 1))
    onTextEdited: if (acceptableInput)
        entered(parseInt(text))
    onActiveFocusChanged: {
        if (activeFocus)
            selectAll();
        else
            text = Qt.binding(() => number.toString().padStart(2, "0"));
    }
    Accessible.name: text
}

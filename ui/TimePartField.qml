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

    /// A typed number is being reported: the typed text stays until the field loses the focus.
    property bool isTaken: false

    function showNumber() {
        text = number.toString().padStart(2, "0");
        if (activeFocus)
            selectAll();
    }

    implicitWidth: 48
    isSmall: true
    horizontalAlignment: TextInput.AlignHCenter
    maximumLength: 2
    inputMethodHints: Qt.ImhDigitsOnly
    validator: IntValidator {
        bottom: 0
        top: field.most
    }
    Component.onCompleted: showNumber()
    onNumberChanged: {
        if (!isTaken)
            showNumber();
    }
    Keys.onUpPressed: stepped(1)
    Keys.onDownPressed: stepped(-1)
    onTextEdited: {
        if (!acceptableInput) {
            if (text.length === maximumLength)
                showNumber();
            return;
        }
        isTaken = true;
        entered(parseInt(text));
        isTaken = false;
    }
    onActiveFocusChanged: showNumber()
    Accessible.name: name
}

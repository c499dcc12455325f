import QtQuick

/// Two digits of a time. Up and Down ask for a change by one, the wheel for one to the next multiple of its step.
AppTextField {
    id: field

    required property int number
    required property int most
    property int wheelStep: 1
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

    WheelHandler {
        property real turned: 0

        onWheel: event => {
            turned += event.angleDelta.y;
            if (Math.abs(turned) < 120)
                return;
            const passed = field.number / field.wheelStep;
            const next = turned > 0 ? Math.floor(passed) + 1 : Math.ceil(passed) - 1;
            turned = 0;
            field.stepped(next * field.wheelStep - field.number);
        }
    }
}

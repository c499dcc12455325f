import QtQuick
import QtQuick.Templates as T

/// What all buttons share: Return and Enter press them, and assistive technology knows them.
T.Button {
    id: button

    /// A held key presses once.
    function press(event: KeyEvent) {
        event.accepted = true;
        if (!event.isAutoRepeat)
            clicked();
    }

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.onPressAction: clicked()
    Accessible.name: text
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    ClickFocus {
        control: button
    }
}

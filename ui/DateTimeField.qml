pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// A date with or without time, edited part by part: Left, Right, Home and End choose a part, Up and Down change it.
/// Digits and the letters of a month's name type it, a separator leads to the next one; what is no date makes the border
/// red and leaves the value alone. Copy and paste take the whole text. The icon, Alt+Down, F4 and Space open a calendar.
AppTextField {
    id: field

    property alias value: editor.value
    property alias isDateOnly: editor.isDateOnly
    property alias firstWeekday: calendar.firstWeekday
    /// The current moment, for the mark on today.
    property date now
    /// Name for assistive technology.
    property string name

    /// The user changed the value.
    signal edited(date value)

    /// Selected too, for assistive technology.
    function showPart() {
        if (activeFocus)
            select(editor.partStart, editor.partStart + editor.partLength);
    }

    function isChangeOfText(event: KeyEvent): bool {
        return [StandardKey.Cut, StandardKey.Undo, StandardKey.Redo].some(key => event.matches(key)); // qmllint disable unqualified
    }

    function hasEdited(event: KeyEvent): bool {
        if (event.matches(StandardKey.Paste)) // qmllint disable unqualified
            editor.paste();
        else if (event.matches(StandardKey.Copy)) // qmllint disable unqualified
            editor.copy();
        else if (event.key === Qt.Key_F4 || event.key === Qt.Key_Down && event.modifiers & Qt.AltModifier)
            calendar.open();
        else if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return isChangeOfText(event);
        else if (event.key === Qt.Key_Left || event.key === Qt.Key_Right)
            editor.movePart(event.key === Qt.Key_Left ? -1 : 1);
        else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
            editor.movePart(event.key === Qt.Key_Home ? -text.length : text.length);
        else if (event.key === Qt.Key_Up || event.key === Qt.Key_Down)
            editor.step(event.key === Qt.Key_Up ? 1 : -1);
        else if (event.key === Qt.Key_Backspace || event.key === Qt.Key_Delete)
            editor.erase();
        else if (event.key === Qt.Key_Escape)
            return editor.cancelTyping();
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            return editor.isRefused || !editor.finishTyping();
        else if (!editor.type(event.text)) {
            if (event.key !== Qt.Key_Space)
                return false;
            calendar.open();
        }
        return true;
    }

    implicitWidth: isDateOnly ? Theme.dateWidth : Theme.dateTimeWidth
    rightPadding: 30
    // Not read-only, so that a screen reader does not say so; yet nothing but the editor changes the text.
    onTextEdited: text = Qt.binding(() => editor.text)
    cursorDelegate: Item {}
    selectByMouse: false
    selectionColor: Theme.transparent
    selectedTextColor: Theme.transparent
    text: editor.text
    onTextChanged: showPart()
    onActiveFocusChanged: {
        if (activeFocus)
            showPart();
        else {
            editor.finishTyping();
            deselect();
        }
    }
    onReleased: event => editor.choosePartAt(positionAt(event.x, event.y))
    Accessible.name: name
    Accessible.editable: true
    Keys.onPressed: event => event.accepted = hasEdited(event)

    DateTimeEditor {
        id: editor

        isEnglish: Language.isEnglish
        onEdited: value => field.edited(value)
        onPartChanged: field.showPart()
        Component.onCompleted: takeKeysOf(field)
    }

    FontMetrics {
        id: metrics

        font: field.font
    }

    background: FieldFrame {
        isFocused: field.activeFocus || calendar.visible
        isEnabled: field.enabled
        isRefused: editor.isRefused

        Rectangle {
            x: field.leftPadding + metrics.advanceWidth(editor.text.slice(0, editor.partStart)) - 2
            y: (parent.height - height) / 2
            width: metrics.advanceWidth(editor.text.slice(editor.partStart, editor.partStart + editor.partLength)) + 4
            height: 20
            radius: 4
            color: Theme.accentSoft
            visible: field.activeFocus && !calendar.visible
        }
    }

    Item {
        x: field.width - 30
        width: 30
        height: field.height

        Icon {
            anchors.centerIn: parent
            name: "calendar"
            size: 14
        }

        TapHandler {
            onTapped: {
                field.forceActiveFocus(Qt.MouseFocusReason);
                calendar.open();
            }
        }
    }

    CalendarPopup {
        id: calendar

        editor: editor
        now: field.now
        restY: field.height + 4
        onClosed: field.forceActiveFocus(Qt.PopupFocusReason)
    }
}

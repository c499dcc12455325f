import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A date with or without time, edited part by part: Left, Right, Home and End choose a part, Up and Down change it.
/// Tab chooses the first part. Digits and letters of a month's name fill the part, a separator or the sign after a number
/// in Chinese leads to the next one. A complete date in ISO 8601 or in either language is understood as well. All of it
/// may come from an input method. Select-all, copy and paste apply to the whole text. Invalid text turns the border red
/// and does not change the value. The icon, Alt+Down, F4 and Space open a calendar.
AppTextField {
    id: field

    property alias value: editor.value
    property alias isDateOnly: editor.isDateOnly
    property int firstWeekday: 1
    /// The current moment, for the mark on today.
    property date now
    /// Name for assistive technology.
    property string name

    readonly property string refusal: isDateOnly ? Language.text("这不是有效的日期。可输入 2026-12-24 这样的日期，或按 Esc 恢复原值。", "Not a valid date. Type one such as 2026-12-24, or press Esc to restore the previous one.") : Language.text("这不是有效的日期和时间。可输入 2026-12-24 18:00 这样的时间，或按 Esc 恢复原值。", "Not a valid date and time. Type one such as 2026-12-24 18:00, or press Esc to restore the previous one.")

    readonly property bool isCalendarShown: calendar.item !== null
    readonly property bool isComposing: composer.preedit !== ""
    /// What stands for the chosen part: what is composed, while an input method does that.
    readonly property string partText: isComposing ? composer.preedit : editor.text.slice(editor.partStart, editor.partStart + editor.partLength)

    /// The user changed the value.
    signal edited(date value)

    /// A form calls this before it uses the value. Returns false and takes the focus if the text is not a date.
    function accept(): bool {
        const isUnderstood = editor.finishTyping();
        if (!isUnderstood)
            forceActiveFocus(Qt.OtherFocusReason);
        return isUnderstood;
    }

    function openCalendar() {
        calendar.active = true;
        (calendar.item as CalendarPopup).open();
    }

    /// Selected too, for assistive technology.
    function showPart() {
        if (activeFocus)
            select(editor.partStart, editor.partStart + editor.partLength);
    }

    function isChangeOfText(event: KeyEvent): bool {
        return [StandardKey.Cut, StandardKey.Undo, StandardKey.Redo].some(key => event.matches(key)); // qmllint disable unqualified
    }

    function hasEdited(event: KeyEvent): bool {
        // While an input method is composing, the keys are its own.
        if (isComposing)
            return true;
        if (event.matches(StandardKey.Paste)) // qmllint disable unqualified
            editor.paste();
        else if (event.matches(StandardKey.Copy)) // qmllint disable unqualified
            editor.copy();
        else if (event.matches(StandardKey.SelectAll)) // qmllint disable unqualified
            editor.chooseAll();
        else if (event.key === Qt.Key_F4 || event.key === Qt.Key_Down && event.modifiers & Qt.AltModifier)
            openCalendar();
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
            return !editor.finishTyping();
        else if (!editor.type(event.text)) {
            if (event.key !== Qt.Key_Space)
                return false;
            openCalendar();
        }
        return true;
    }

    implicitWidth: isDateOnly ? Theme.dateWidth : Theme.dateTimeWidth
    rightPadding: 28
    // Not read-only, because screen readers would announce that; but only the editor changes the text.
    onTextEdited: text = Qt.binding(() => editor.text)
    cursorDelegate: Item {}
    selectByMouse: false
    selectionColor: Theme.transparent
    selectedTextColor: Theme.transparent
    color: !enabled ? Theme.textDisabled : isComposing || showsElided ? Theme.transparent : Theme.text
    text: editor.text
    onTextChanged: showPart()
    onActiveFocusChanged: {
        if (activeFocus) {
            if (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason)
                editor.movePart(-text.length);
            showPart();
        } else {
            editor.finishTyping();
            deselect();
        }
    }
    // Unfinished text must not reappear when the field is shown again.
    onVisibleChanged: {
        if (!visible)
            editor.cancelTyping();
    }
    onReleased: event => editor.choosePartAt(positionAt(event.x, event.y))
    Accessible.name: name
    Accessible.editable: true
    Accessible.description: editor.isRefused ? refusal : ""
    Keys.onPressed: event => event.accepted = hasEdited(event)

    DateTimeEditor {
        id: editor

        isEnglish: Language.isEnglish
        onEdited: value => field.edited(value)
        onPartChanged: field.showPart()
    }

    InputMethodTap {
        id: composer

        field: field
        onCommitted: text => editor.write(text)
    }

    FontMetrics {
        id: metrics

        font: field.font
    }

    background: FieldFrame {
        isFocused: field.activeFocus || field.isCalendarShown
        isEnabled: field.enabled
        isRefused: editor.isRefused

        Rectangle {
            // Without a part it is the caret.
            readonly property bool isCaret: field.partText === ""

            x: Math.min(field.leftPadding + metrics.advanceWidth(editor.text.slice(0, editor.partStart)) - (isCaret ? 0 : 2), field.width - field.rightPadding)
            y: (parent.height - height) / 2
            width: isCaret ? 1 : Math.min(metrics.advanceWidth(field.partText) + 4, field.width - field.rightPadding - x)
            height: 20
            radius: isCaret ? 0 : 4
            color: isCaret ? Theme.accentText : Theme.accentSoft
            visible: field.activeFocus && !field.isCalendarShown
        }
    }

    AppText {
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        visible: field.isComposing
        font.pixelSize: field.font.pixelSize
        text: editor.text.slice(0, editor.partStart) + composer.preedit + editor.text.slice(editor.partStart + editor.partLength)
        Accessible.ignored: true
    }

    Item {
        x: field.width - 32
        width: 32
        height: field.height

        Icon {
            anchors.centerIn: parent
            name: "calendar"
            size: 14
        }

        // Unlike a tap handler, it keeps the press from items beneath a sheet.
        MouseArea {
            anchors.fill: parent
            onClicked: {
                field.forceActiveFocus(Qt.MouseFocusReason);
                field.openCalendar();
            }
        }
    }

    AppToolTip {
        text: field.refusal
        visible: editor.isRefused && (field.activeFocus || field.hovered) && !field.isCalendarShown
        delay: 0
        // Escape is for the field.
        closePolicy: T.Popup.NoAutoClose
    }

    // Only while it is shown: its days would follow every change of the value.
    Loader {
        id: calendar

        readonly property DateTimeEditor dateEditor: editor

        active: false
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: CalendarPopup {
            parent: field
            name: field.name
            editor: calendar.dateEditor
            firstWeekday: field.firstWeekday
            now: field.now
            restY: field.height + 4
            onClosed: {
                field.forceActiveFocus(Qt.PopupFocusReason);
                calendar.active = false;
            }
        }
        // qmllint enable unqualified
    }
}

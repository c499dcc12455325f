pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A date with or without time, edited part by part: Left and Right choose a part, Up and Down change it, digits type
/// it. The icon, Alt+Down and Space open a calendar.
T.Control {
    id: field

    property alias value: editor.value
    property alias isDateOnly: editor.isDateOnly
    property alias firstWeekday: editor.firstWeekday
    /// The current moment, for the mark on today.
    property date now
    /// Name for assistive technology.
    property string name

    /// The user changed the value.
    signal edited(date value)

    readonly property bool hasChosenPart: activeFocus && !calendar.visible

    implicitWidth: isDateOnly ? Theme.dateWidth : Theme.dateTimeWidth
    implicitHeight: Theme.controlHeight
    leftPadding: 10
    rightPadding: 30
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    Accessible.description: editor.text
    Accessible.editable: true
    Keys.onLeftPressed: editor.movePart(-1)
    Keys.onRightPressed: editor.movePart(1)
    Keys.onUpPressed: editor.step(1)
    Keys.onDownPressed: event => {
        if (event.modifiers & Qt.AltModifier)
            calendar.open();
        else
            editor.step(-1);
    }
    Keys.onSpacePressed: calendar.open()
    Keys.onPressed: event => {
        if (event.key < Qt.Key_0 || event.key > Qt.Key_9 || event.modifiers & Qt.ControlModifier)
            return;
        editor.typeDigit(event.key - Qt.Key_0);
        event.accepted = true;
    }

    DateTimeEditor {
        id: editor

        isEnglish: Language.isEnglish
        onEdited: value => field.edited(value)
    }

    background: FieldFrame {
        isFocused: field.activeFocus || calendar.visible
        isEnabled: field.enabled
    }

    contentItem: Item {
        FontMetrics {
            id: metrics

            font: label.font
        }

        Rectangle {
            readonly property string textBefore: editor.text.slice(0, editor.partStart)

            x: metrics.advanceWidth(textBefore) - 2
            y: (parent.height - height) / 2
            width: metrics.advanceWidth(editor.text.slice(editor.partStart, editor.partStart + editor.partLength)) + 4
            height: 20
            radius: 4
            color: Theme.accentSoft
            visible: field.hasChosenPart
        }

        AppText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            text: editor.text
            token: Theme.control
            color: field.enabled ? Theme.text : Theme.textDisabled
            Accessible.ignored: true
        }

        TapHandler {
            onTapped: point => {
                field.forceActiveFocus(Qt.MouseFocusReason);
                let position = 0;
                while (position < editor.text.length && metrics.advanceWidth(editor.text.slice(0, position + 1)) < point.position.x)
                    ++position;
                editor.choosePartAt(position);
            }
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

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// A one-line field. Text that does not fit elides while the field has no focus.
T.TextField {
    id: field

    property bool isSmall: false
    /// What the field is, for assistive technology; the placeholder may be an example.
    property string name: placeholderText
    /// In a sheet, Return only emits `accepted` and does not press the primary button.
    property bool keepsReturn: false

    function returnPressed(event: KeyEvent) {
        event.accepted = inputMethodComposing || keepsReturn;
        if (keepsReturn && !inputMethodComposing)
            accepted();
    }

    implicitWidth: 160
    implicitHeight: isSmall ? Theme.smallControlHeight : Theme.controlHeight
    // From the outer edge, the border included.
    leftPadding: isSmall ? 9 : 11
    rightPadding: leftPadding
    // Chinese makes the line taller, but Qt keeps the baseline at the same distance from its top.
    topPadding: Math.max(0, contentHeight - Math.ceil(metrics.height))
    bottomPadding: 0
    verticalAlignment: TextInput.AlignVCenter
    font.family: Theme.control.family
    font.pixelSize: isSmall ? Theme.caption.size : Theme.control.size
    color: enabled ? (showsElided ? Theme.transparent : Theme.text) : Theme.textDisabled
    selectionColor: Theme.accentSoft
    selectedTextColor: Theme.text
    selectByMouse: true
    hoverEnabled: true
    Accessible.name: name
    Accessible.description: text === "" && name !== placeholderText ? placeholderText : ""
    // While an input method is composing, it alone handles these keys.
    Keys.onReturnPressed: event => field.returnPressed(event)
    Keys.onEnterPressed: event => field.returnPressed(event)
    Keys.onEscapePressed: event => event.accepted = field.inputMethodComposing

    readonly property bool showsElided: !activeFocus && contentWidth > width - leftPadding - rightPadding

    FontMetrics {
        id: metrics

        font: field.font
    }

    cursorDelegate: Rectangle {
        width: 1
        color: Theme.accentText
        visible: field.cursorVisible
    }

    background: FieldFrame {
        radius: field.isSmall ? Theme.smallRadius : Theme.controlRadius
        isFocused: field.activeFocus
        isEnabled: field.enabled
    }

    AppText {
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        visible: field.showsElided || (field.text === "" && field.preeditText === "")
        text: field.showsElided ? field.text : field.placeholderText
        font.pixelSize: field.font.pixelSize
        font.weight: field.font.weight
        color: !field.enabled ? Theme.textDisabled : field.showsElided ? Theme.text : Theme.textTertiary
        Accessible.ignored: true
    }
}

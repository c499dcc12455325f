import QtQuick
import QtQuick.Templates as T

/// A multi-line field that grows with its text up to `maximumHeight` and then scrolls inside. Tab leaves it.
T.Control {
    id: control

    property alias text: area.text
    property alias textArea: area
    property string placeholder
    property real minHeight: 72
    property real maximumHeight: 160

    function leave(event: KeyEvent, isForward: bool) {
        event.accepted = true;
        if (!area.inputMethodComposing)
            area.nextItemInFocusChain(isForward)?.forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    implicitWidth: 240
    implicitHeight: Math.max(minHeight, Math.min(maximumHeight, area.implicitHeight))
    focusPolicy: Qt.NoFocus

    background: FieldFrame {
        isFocused: area.activeFocus
        isEnabled: control.enabled
    }

    contentItem: Flickable {
        id: flick

        clip: true
        contentWidth: width
        contentHeight: area.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height

        T.ScrollBar.vertical: AppScrollBar {}

        function follow(rectangle: rect) {
            if (contentY > rectangle.y)
                contentY = rectangle.y;
            else if (contentY + height < rectangle.y + rectangle.height)
                contentY = rectangle.y + rectangle.height - height;
        }

        T.TextArea {
            id: area

            width: flick.width
            height: Math.max(implicitHeight, flick.height)
            implicitHeight: contentHeight + topPadding + bottomPadding
            leftPadding: 11
            rightPadding: 11
            // The first line stands where it would if the lines were as tall as the style's.
            topPadding: 8 + Math.max(0, Math.round((Theme.control.line - contentHeight / Math.max(1, lineCount)) / 2))
            bottomPadding: 8
            font.family: Theme.control.family
            font.pixelSize: Theme.control.size
            color: enabled ? Theme.text : Theme.textDisabled
            selectionColor: Theme.accentSoft
            selectedTextColor: Theme.text
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            Keys.onTabPressed: event => control.leave(event, true)
            Keys.onBacktabPressed: event => control.leave(event, false)
            Accessible.name: control.placeholder
            // While an input method is composing, Escape is its own and not the sheet's.
            Keys.onEscapePressed: event => event.accepted = area.inputMethodComposing
            onCursorRectangleChanged: flick.follow(cursorRectangle)

            AppText {
                x: area.leftPadding
                y: 8
                width: area.width - area.leftPadding - area.rightPadding
                visible: area.text === "" && area.preeditText === ""
                text: control.placeholder
                token: Theme.control
                color: control.enabled ? Theme.textTertiary : Theme.textDisabled
                Accessible.ignored: true
            }
        }
    }
}

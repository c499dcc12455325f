pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// The source of a document, in the fonts for source text; it has its own scroll bar.
Rectangle {
    id: area

    property alias textArea: field
    /// A font of Theme.sourceFamilies.
    required property font sourceFont
    required property bool isReadOnly

    function takeFocus(reason: int) {
        field.forceActiveFocus(reason);
    }

    radius: Theme.cardRadius
    color: Theme.editor

    Flickable {
        id: flick

        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        clip: true
        contentWidth: width
        contentHeight: field.height
        boundsBehavior: Flickable.StopAtBounds
        // Dragging selects text.
        interactive: false

        T.ScrollBar.vertical: AppScrollBar {
            parent: area
            x: area.width - width
            height: area.height
        }

        function follow(rectangle: rect) {
            // The letters stand at the foot of their line.
            const lineTop = rectangle.y + rectangle.height - Theme.source.line;
            if (contentY > lineTop - field.topPadding)
                contentY = Math.max(0, lineTop - field.topPadding);
            else if (contentY + height < rectangle.y + rectangle.height + field.bottomPadding)
                contentY = rectangle.y + rectangle.height + field.bottomPadding - height;
        }

        function scrollBy(distance: real) {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + distance));
        }

        T.TextArea {
            id: field

            property bool isRedrawn: false

            width: flick.width
            height: Math.max(contentHeight + topPadding + bottomPadding, flick.height)
            leftPadding: 6
            rightPadding: 6
            topPadding: 13
            bottomPadding: 11
            font: area.sourceFont
            color: Theme.text
            selectionColor: Theme.accentSoft
            // A different colour, which looks the same, makes Qt redraw all lines in view. When only the selection
            // changes, Qt 6.4 draws the lines above it twice, one copy over the other.
            selectedTextColor: isRedrawn ? Theme.text : Qt.alpha(Theme.text, Theme.nearlyOpaque)
            readOnly: area.isReadOnly
            selectByMouse: true
            persistentSelection: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            tabStopDistance: 4 * metrics.advanceWidth("0")
            Accessible.name: Language.text("Markdown 源文本", "Markdown source")
            onSelectionStartChanged: redraw()
            onSelectionEndChanged: redraw()
            onActiveFocusChanged: redraw()
            onPressed: redraw()
            onReleased: redraw()
            onCursorRectangleChanged: flick.follow(cursorRectangle)
            // The input method handles it.
            Keys.onEscapePressed: event => event.accepted = true
            Keys.onPressed: event => {
                const page = event.key === Qt.Key_PageUp ? -1 : event.key === Qt.Key_PageDown ? 1 : 0;
                if (page !== 0) {
                    event.accepted = true;
                    field.moveByPage(page, (event.modifiers & Qt.ShiftModifier) !== 0);
                }
            }

            cursorDelegate: Rectangle {
                width: 1
                color: Theme.accentText
                visible: field.cursorVisible
            }

            function redraw() {
                isRedrawn = !isRedrawn;
            }

            function moveByPage(direction: int, isSelecting: bool) {
                const step = direction * Math.max(Theme.source.line, flick.height - Theme.source.line);
                flick.scrollBy(step);
                const position = positionAt(cursorRectangle.x, cursorRectangle.y + cursorRectangle.height / 2 + step);
                if (isSelecting)
                    moveCursorSelection(position, TextEdit.SelectCharacters);
                else
                    cursorPosition = position;
            }
        }
    }

    FontMetrics {
        id: metrics

        font: area.sourceFont
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => flick.scrollBy(event.pixelDelta.y !== 0 ? -event.pixelDelta.y : -event.angleDelta.y / 120 * 3 * Theme.source.line)
    }
}

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Ui

/// A modal sheet over the window: head with title, scrolling body, fixed foot behind a hairline. Focus stays inside and
/// returns to the opener. Esc asks to leave; Return presses the button that has the focus, and the primary button where the
/// focused item has no use for it; a click on the scrim does nothing.
T.Popup {
    id: sheet

    property string title
    property TypeToken titleToken: Theme.sheetTitle
    property int titleLines: 1
    /// Whether the sheet is open; setting it opens or closes the sheet.
    property bool isShown: false
    property int sheetWidth: 520
    property int headPadding: 22
    property int sidePadding: 24
    property int bodyTopPadding: 16
    property int bodyBottomPadding: 20
    property int bodySpacing: 16
    property int focusMargin: 16
    /// Shown in a line that closes the body and does not scroll with it; no line while empty.
    property string status
    property alias statusLine: statusLine
    property alias head: headColumn.data
    default property alias body: bodyColumn.data
    property alias foot: footRow.data
    property alias bodyFlickable: flick
    property AppButton primaryButton: null
    /// Takes the focus when the sheet has opened; without it the primary button does, or the sheet itself. It shows a
    /// ring if the opener did.
    property Item initialFocus: null
    /// How far below its place it still is.
    property real rise: 0

    /// Esc was pressed and no popup inside took it.
    signal leaving
    /// The sheet has closed, and the item that the focus would return to with that reason is no longer there.
    signal openerGone(int reason)

    /// Scrolls as little as needed to show the item with room to spare.
    function reveal(item: Item) {
        const top = item.mapToItem(bodyColumn, 0, 0).y - focusMargin;
        const bottom = top + item.height + 2 * focusMargin;
        if (item.height > flick.height)
            return;
        if (top < flick.contentY || bottom - top > flick.height)
            flick.contentY = Math.max(0, Math.min(top, flick.contentHeight - flick.height));
        else if (bottom > flick.contentY + flick.height)
            flick.contentY = Math.max(0, Math.min(bottom, flick.contentHeight) - flick.height);
    }

    /// Shows the item of the body that has the focus, if it is one of those; of a text of many lines its frame.
    function followFocus() {
        let item = surface.Window.activeFocusItem as Item;
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor instanceof MultilineBase)
                item = ancestor;
            if (ancestor === bodyColumn)
                reveal(item);
        }
    }

    parent: T.Overlay.overlay
    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: Math.round(((parent?.height ?? 0) - height) / 2) + rise
    width: sheetWidth
    height: Math.min((parent?.height ?? 0) - 48, headColumn.height + bodyColumn.height + statusBox.height + footBox.height)
    modal: true
    dim: true
    focus: true
    padding: 0
    closePolicy: T.Popup.NoAutoClose
    onIsShownChanged: isShown ? open() : close()
    onAboutToShow: {
        opener.remember();
        isShown = true;
    }
    onAboutToHide: isShown = false
    onOpened: {
        const first = initialFocus ?? primaryButton;
        if (first !== null)
            FocusHandover.give(first, opener.reason);
    }
    onClosed: opener.restore()

    QtObject {
        id: opener

        property Item item: null
        property bool isAwaited: false
        property int reason: Qt.MouseFocusReason

        function remember() {
            item = sheet.parent?.Window.activeFocusItem ?? null;
            isAwaited = item !== null;
            reason = FocusHandover.reasonAfter(item);
        }

        function restore() {
            if (item?.visible)
                FocusHandover.give(item, reason);
            else if (isAwaited && item === null)
                sheet.openerGone(reason);
            item = null;
        }
    }

    T.Overlay.modal: Rectangle {
        id: scrim

        color: Theme.scrim

        Behavior on opacity {
            NumberAnimation {
                duration: scrim.opacity < 0.5 ? Theme.sheetIn : Theme.sheetOut
                easing.type: scrim.opacity < 0.5 ? Easing.OutCubic : Easing.InCubic
            }
        }
    }

    PopupName {
        popup: sheet
        name: sheet.title
    }

    background: PopupFrame {
        elevation: 2
        radius: Theme.sheetRadius
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.sheetIn
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "rise"
            from: Theme.sheetRise
            to: 0
            duration: Theme.sheetIn
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.sheetOut
            easing.type: Easing.InCubic
        }
    }

    contentItem: SheetSurface {
        id: surface

        focus: true
        primaryButton: sheet.primaryButton
        onLeaving: sheet.leaving()

        Connections {
            function onActiveFocusItemChanged() {
                sheet.followFocus();
            }

            target: surface.Window.window
        }

        TypingWatch {
            onTyped: sheet.followFocus()
        }

        // What comes above the item with the focus pushes it down; once everything has its place, it is shown again.
        Timer {
            id: settling

            interval: 0
            onTriggered: sheet.followFocus()
        }

        Column {
            id: headColumn

            x: sheet.sidePadding
            width: parent.width - 2 * sheet.sidePadding
            topPadding: sheet.headPadding
            spacing: 4

            AppText {
                width: parent.width
                text: sheet.title
                token: sheet.titleToken
                isMultiline: sheet.titleLines > 1
                maximumLineCount: sheet.titleLines
                visible: sheet.title !== ""
                Accessible.role: Accessible.Heading

                ElidedTip {}
            }
        }

        Flickable {
            id: flick

            anchors.top: headColumn.bottom
            anchors.bottom: statusBox.top
            width: parent.width
            clip: contentHeight > height
            contentWidth: width
            contentHeight: bodyColumn.height
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height
            onHeightChanged: settling.restart()
            onContentHeightChanged: settling.restart()
            T.ScrollBar.vertical: AppScrollBar {}

            Column {
                id: bodyColumn

                x: sheet.sidePadding
                width: flick.width - 2 * sheet.sidePadding
                topPadding: sheet.bodyTopPadding
                bottomPadding: statusBox.visible ? sheet.bodySpacing : sheet.bodyBottomPadding
                spacing: sheet.bodySpacing
            }
        }

        Item {
            id: statusBox

            anchors.bottom: footBox.top
            width: parent.width
            height: visible ? statusLine.implicitHeight + sheet.bodyBottomPadding : 0
            visible: sheet.status !== ""

            Separator {
                width: parent.width
                visible: flick.interactive
            }

            StatusLine {
                id: statusLine

                x: sheet.sidePadding
                y: flick.interactive ? sheet.bodyBottomPadding / 2 : 0
                width: parent.width - 2 * sheet.sidePadding
                message: sheet.status
            }
        }

        Item {
            id: footBox

            anchors.bottom: parent.bottom
            width: parent.width
            height: footRow.children.length > 0 ? 61 : 0
            visible: height > 0

            Separator {
                width: parent.width
            }

            Item {
                id: footRow

                x: sheet.sidePadding
                y: 15
                width: parent.width - 2 * sheet.sidePadding
                height: Theme.controlHeight
            }
        }
    }
}

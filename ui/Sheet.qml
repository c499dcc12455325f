import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A modal sheet over the window: head with title, scrolling body, fixed foot behind a hairline. Focus stays inside and
/// returns to the opener. Esc emits leaving(). Return presses the focused button, or the primary button if the
/// focused item does not use Return. A click on the scrim does nothing.
T.Popup {
    id: sheet

    property string title
    /// What the sheet is called by assistive technology.
    property string name: title
    property TypeToken titleToken: Theme.sheetTitle
    property int titleLines: 1
    /// Whether the sheet is open; setting it opens or closes the sheet.
    property bool isShown: false
    property int sheetWidth: 520
    property int headPadding: 22
    property int sidePadding: 24
    /// What the window keeps free above and below.
    property int outerSpace: 48
    property int footHeight: 61
    property int bodyTopPadding: 16
    property int bodyBottomPadding: 20
    property int bodySpacing: 16
    /// Shown in a line that closes the body and does not scroll with it; no line while empty.
    property string status
    property alias statusLine: statusLine
    property alias head: headColumn.data
    default property alias body: bodyColumn.data
    property alias foot: footRow.data
    property alias bodyFlickable: flick
    property AppButton primaryButton: null
    /// Gets the focus when the sheet has opened; if null, the primary button does, or else the sheet itself. It shows a
    /// ring if the opener did.
    property Item initialFocus: null
    /// Whether the user gave the focus to something in the sheet before it had opened. That keeps it.
    property bool isFocusChosen: false
    /// Whether the window's toast is shown over the sheet: for sheets that remove something.
    property bool showsToast: false
    /// Distance to its final position while it rises.
    property real rise: 0

    /// Esc was pressed and no popup inside took it.
    signal leaving
    /// The sheet has closed, but the item that would get the focus back with that reason no longer exists.
    signal openerGone(int reason)

    /// Closes, and hands the focus back before the sheet has faded out.
    function dismiss() {
        close();
        opener.restore();
    }

    parent: T.Overlay.overlay
    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: Math.round(((parent?.height ?? 0) - height) / 2) + rise
    width: sheetWidth
    height: Math.min((parent?.height ?? 0) - outerSpace, headColumn.height + bodyColumn.height + statusBox.height + footBox.height)
    modal: true
    dim: true
    focus: true
    padding: 0
    closePolicy: T.Popup.NoAutoClose
    onIsShownChanged: isShown ? open() : close()
    onAboutToShow: {
        opener.remember();
        isShown = true;
        if (showsToast)
            ToastStage.surface = surface;
    }
    onAboutToHide: {
        isShown = false;
        if (ToastStage.surface === surface)
            ToastStage.surface = null;
    }
    onActiveFocusChanged: {
        if (activeFocus && !opened)
            opener.noteEntered();
    }
    onOpened: {
        isFocusChosen = opener.hasMovedOn();
        const first = initialFocus ?? primaryButton;
        if (first !== null && !isFocusChosen)
            FocusHandover.give(first, opener.reason);
    }
    onClosed: opener.restore()

    Binding {
        target: ToastStage
        property: "foot"
        value: footBox.height + statusBox.height
        when: ToastStage.surface === surface
    }

    SheetOpener {
        id: opener

        sheet: sheet
        onGone: reason => sheet.openerGone(reason)
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
        name: sheet.name
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

        ScrollPage {
            id: flick

            anchors.top: headColumn.bottom
            anchors.bottom: statusBox.top
            width: parent.width
            clip: interactive
            contentHeight: bodyColumn.height
            interactive: contentHeight + footRoom > height
            footRoom: ToastStage.surface === surface ? ToastStage.room : 0
            // Items that appear above the focused item push it down. When the layout is complete, it is shown again.
            onHeightChanged: Qt.callLater(followFocus) // qmllint disable
            onContentHeightChanged: Qt.callLater(followFocus) // qmllint disable
            onFootRoomChanged: Qt.callLater(followFocus) // qmllint disable

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
                lineLimit: 2
            }
        }

        Item {
            id: footBox

            anchors.bottom: parent.bottom
            width: parent.width
            height: footRow.children.length > 0 ? sheet.footHeight : 0
            visible: height > 0

            Separator {
                width: parent.width
            }

            Item {
                id: footRow

                x: sheet.sidePadding
                y: 1 + Math.floor((sheet.footHeight - 1 - height) / 2)
                width: parent.width - 2 * sheet.sidePadding
                height: Theme.controlHeight
            }
        }
    }
}

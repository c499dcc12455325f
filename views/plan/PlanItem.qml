import QtQuick
import Tessaly.Ui

/// A to-do or goal task of the plan. The first of a group stands below the group's heading.
FocusScope {
    id: item

    required property int index
    required property string itemId
    required property string heading
    required property int groupCount
    required property string title
    required property string detail
    required property bool isOverdue
    required property string planned
    required property bool isCurrent
    /// Whether it is on its way to the week.
    required property bool isHeld
    /// Whether it lies on a raised ground.
    required property bool isRaised
    readonly property string secondLine: planned === "" ? detail : detail + " · " + planned

    /// To be planned in the first free hour.
    signal placed
    /// Taken up by a key, to be placed by hand.
    signal taken
    signal stepped(int by)
    signal pointed
    /// The pointer takes it to a place of the scene.
    signal dragStarted
    signal dragged(point place, bool isFine)
    signal dropped
    /// The pointer no longer takes it, and was not released either.
    signal abandoned

    function takeFocus() {
        body.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: body.y + body.height + 2
    Component.onDestruction: {
        if (handler.active)
            abandoned();
    }

    AppText {
        id: headingText

        x: 6
        height: visible ? 32 : 0
        visible: item.heading !== ""
        topPadding: 4
        text: item.heading
        token: Theme.captionBold
        color: Theme.textSecondary
        Accessible.role: Accessible.Heading
        Accessible.name: item.heading + " " + item.groupCount
    }

    LineText {
        anchors.left: headingText.right
        anchors.leftMargin: 6
        anchors.baseline: headingText.baseline
        visible: headingText.visible
        text: item.groupCount
        token: Theme.caption
        color: Theme.textSecondary
    }

    PushButton {
        id: body

        y: headingText.height
        width: parent.width
        height: 52
        opacity: item.isHeld ? 0.4 : 1
        text: item.title
        Accessible.name: item.title + Language.text("，", ", ") + item.secondLine
        // Return plans it; a click only chooses it, and a drag takes it along.
        activeFocusOnTab: activeFocus || item.isCurrent
        focusPolicy: activeFocus || item.isCurrent ? Qt.StrongFocus : Qt.ClickFocus
        onActiveFocusChanged: {
            if (activeFocus)
                item.pointed();
        }
        Accessible.onPressAction: item.placed()
        Keys.onReturnPressed: event => placeOnce(event)
        Keys.onEnterPressed: event => placeOnce(event)
        Keys.onSpacePressed: event => placeOnce(event)
        Keys.onUpPressed: item.stepped(-1)
        Keys.onDownPressed: item.stepped(1)
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_P && event.modifiers === Qt.NoModifier;
            if (event.accepted && !event.isAutoRepeat)
                item.taken();
        }

        function placeOnce(event: KeyEvent) {
            event.accepted = true;
            if (!event.isAutoRepeat)
                item.placed();
        }

        background: Rectangle {
            radius: Theme.smallRadius
            color: !body.hovered && !body.down && !body.activeFocus ? Theme.transparent : item.isRaised && Theme.isDark ? Theme.pressed : Theme.hover

            FocusRing {
                visible: body.visualFocus
                targetRadius: Theme.smallRadius
                gap: -2
            }
        }

        contentItem: Item {
            Icon {
                x: 6
                y: 10
                name: "menu"
                size: 14
                color: Theme.textTertiary
            }

            LineText {
                x: 28
                y: 7
                width: parent.width - x - 8
                text: item.title
                token: Theme.button
            }

            LineText {
                id: detailText

                x: 28
                y: 27
                width: Math.min(implicitWidth, parent.width - x - 8 - plannedText.implicitWidth)
                text: item.detail
                token: Theme.caption
                color: item.isOverdue ? Theme.destructive : Theme.textSecondary
            }

            // Whole, whatever stands before it.
            LineText {
                id: plannedText

                x: detailText.x + detailText.width
                y: 27
                text: item.planned === "" ? "" : " · " + item.planned
                token: Theme.caption
                color: detailText.color
            }
        }

        HoverHandler {
            cursorShape: Qt.OpenHandCursor
        }

        DragHandler {
            id: handler

            function follow() {
                item.dragged(centroid.scenePosition, centroid.modifiers & Qt.ShiftModifier);
            }

            target: null
            dragThreshold: 6
            // The list would scroll with it.
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
            onActiveChanged: {
                if (!active)
                    return;
                item.dragStarted();
                follow();
            }
            onGrabChanged: transition => {
                if (transition === PointerDevice.UngrabExclusive)
                    item.dropped();
            }
            onCanceled: item.abandoned()
            onCentroidChanged: {
                if (active)
                    follow();
            }
        }
    }
}

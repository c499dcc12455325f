import QtQuick
import Tessaly.Ui

/// The handle that moves a row: by dragging, or with Ctrl+Up and Ctrl+Down while it has the focus. Esc cancels a drag.
Item {
    id: handle

    required property string help
    required property string itemTitle
    property bool isRowActive: false
    readonly property bool isDragged: drag.active && !drag.isCancelled
    /// How far the pointer has gone, in pixels down.
    readonly property alias offset: drag.offset

    /// One place up (-1) or down (1).
    signal moved(int step)
    signal dragStarted
    signal dragged
    signal dragEnded(bool isCancelled)

    width: 24
    height: 26
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: help + ", " + itemTitle
    Accessible.description: Language.text("Ctrl+↑ 上移，Ctrl+↓ 下移", "Ctrl+↑ moves it up, Ctrl+↓ moves it down")
    Accessible.focusable: true
    Keys.onUpPressed: event => {
        event.accepted = event.modifiers & Qt.ControlModifier;
        if (event.accepted)
            handle.moved(-1);
    }
    Keys.onDownPressed: event => {
        event.accepted = event.modifiers & Qt.ControlModifier;
        if (event.accepted)
            handle.moved(1);
    }

    Icon {
        anchors.centerIn: parent
        name: "menu"
        size: 14
        color: handle.isRowActive || hover.hovered ? Theme.textSecondary : Theme.textTertiary
    }
    FocusRing {
        visible: handle.activeFocus && !handle.isDragged
        gap: -2
        targetRadius: Theme.actionRadius
    }
    HoverHandler {
        id: hover
    }
    DragHandler {
        id: drag

        property real offset: 0
        // A handler keeps the pointer until it is released.
        property bool isCancelled: false

        target: null
        xAxis.enabled: false
        dragThreshold: 4
        onActiveChanged: {
            if (active) {
                // The handler counts from the next event on.
                offset = centroid.scenePosition.y - centroid.scenePressPosition.y;
                handle.dragStarted();
                handle.dragged();
            } else if (!isCancelled) {
                handle.dragEnded(false);
            }
            isCancelled = false;
        }
        onActiveTranslationChanged: {
            if (!handle.isDragged)
                return;
            offset = activeTranslation.y;
            handle.dragged();
        }
    }
    Shortcut {
        enabled: handle.isDragged
        sequence: "Esc"
        onActivated: {
            drag.isCancelled = true;
            handle.dragEnded(true);
        }
    }
    AppToolTip {
        visible: hover.hovered && !drag.active
        text: handle.help
    }
}

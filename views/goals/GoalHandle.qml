import QtQuick
import Tessaly.Ui

/// The handle by which a row is moved: with the pointer, or with Ctrl+Up and Ctrl+Down while it has the focus.
Item {
    id: handle

    required property string help
    property bool isRowActive: false
    readonly property bool isDragged: drag.active
    /// How far the pointer has gone, in pixels down.
    readonly property real offset: drag.activeTranslation.y

    /// One place up (-1) or down (1).
    signal moved(int step)
    signal dragStarted
    signal dragged
    signal dragEnded

    width: 24
    height: 26
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: help
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

        target: null
        xAxis.enabled: false
        dragThreshold: 4
        onActiveChanged: {
            if (active)
                handle.dragStarted();
            else
                handle.dragEnded();
        }
        onActiveTranslationChanged: {
            if (active)
                handle.dragged();
        }
    }
    AppToolTip {
        visible: hover.hovered && !drag.active
        text: handle.help
    }
}

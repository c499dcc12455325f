pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A pop-up choice. The list opens over the box with the current value under the pointer; the wheel scrolls the page,
/// not the value; typing selects. Without entries it does not open.
T.ComboBox {
    id: combo

    property bool isSmall: false
    property bool isRaised: false
    /// Name for assistive technology.
    property string name

    readonly property int entryHeight: 30

    function openList() {
        if (count > 0)
            popup.open();
    }

    function isSpaceForNothing(event: KeyEvent): bool {
        return event.key === Qt.Key_Space && count === 0;
    }

    /// False when the key types nothing.
    function hasTyped(event: KeyEvent): bool {
        if (event.text.length !== 1 || event.text <= " " || event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return false;
        const entries = Array.from({ length: count }, (_, index) => textAt(index));
        const entry = typing.choose(event.text, entries, popup.visible ? highlightedIndex : currentIndex);
        typingPause.restart();
        if (entry >= 0)
            choose(entry);
        return true;
    }

    function choose(entry: int) {
        if (!popup.visible) {
            if (entry === currentIndex)
                return;
            typing.setCurrentIndex(combo, entry);
            activated(entry);
        }
        // In an open list they move no more than the highlight.
        while (popup.visible && highlightedIndex < entry)
            incrementCurrentIndex();
        while (popup.visible && highlightedIndex > entry)
            decrementCurrentIndex();
    }

    /// Return opens the list, but in a sheet it is for the primary button.
    function returnPressed(event: KeyEvent) {
        event.accepted = !popup.visible;
        if (popup.visible)
            return;
        for (let ancestor = combo.parent; ancestor; ancestor = ancestor.parent) {
            const surface = ancestor as SheetSurface;
            if (surface !== null) {
                surface.pressPrimary();
                return;
            }
        }
        openList();
    }

    implicitWidth: 160
    implicitHeight: isSmall ? Theme.smallControlHeight : Theme.controlHeight
    leftPadding: isSmall ? 9 : 11
    rightPadding: 26
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    wheelEnabled: false
    Accessible.name: name
    // The role has no value of its own in Qt 6.4, and the entries, none of which has the focus, are not told.
    Accessible.description: popup.visible && highlightedIndex >= 0 ? textAt(highlightedIndex) : displayText
    Accessible.onPressAction: openList()
    Keys.onReturnPressed: event => combo.returnPressed(event)
    Keys.onEnterPressed: event => combo.returnPressed(event)
    Keys.onPressed: event => event.accepted = combo.isSpaceForNothing(event) || combo.hasTyped(event)
    Keys.onReleased: event => event.accepted = combo.isSpaceForNothing(event)

    ChoiceTyping {
        id: typing
    }

    Timer {
        id: typingPause

        interval: Theme.typingPause
        onTriggered: typing.clear()
    }

    // Without entries a press is not for the box, which would open.
    MouseArea {
        anchors.fill: parent
        enabled: combo.count === 0
        onPressed: combo.forceActiveFocus(Qt.MouseFocusReason)
    }

    background: FieldFrame {
        radius: combo.isSmall ? Theme.smallRadius : Theme.controlRadius
        isFocused: combo.visualFocus || combo.popup.visible
        isEnabled: combo.enabled
        color: !combo.enabled ? Theme.transparent : combo.down ? Theme.buttonPressed : combo.hovered ? Theme.buttonHover : Theme.isDark ? (combo.isRaised ? Theme.pressed : Theme.hover) : Theme.field
    }

    contentItem: AppText {
        text: combo.displayText
        font.pixelSize: combo.isSmall ? Theme.caption.size : Theme.control.size
        color: combo.enabled ? Theme.text : Theme.textDisabled
        height: combo.height
        Accessible.ignored: true

        AppToolTip {
            text: combo.displayText
            visible: combo.hovered && !combo.popup.visible && (combo.contentItem as AppText)?.truncated === true
        }
    }

    indicator: Icon {
        x: combo.width - width - (combo.isSmall ? 6 : 8)
        y: (combo.height - height) / 2
        name: "chevrons-up-down"
        size: 14
    }

    delegate: T.ItemDelegate {
        id: entry

        required property int index

        width: ListView.view?.width ?? 0
        height: combo.entryHeight
        highlighted: combo.highlightedIndex === index
        hoverEnabled: true
        text: combo.textAt(index)
        Accessible.name: text
        Accessible.selectable: true
        Accessible.selected: highlighted
        Accessible.onPressAction: clicked()

        background: Rectangle {
            radius: Theme.actionRadius
            color: entry.highlighted ? Theme.accent : Theme.transparent
        }

        contentItem: Item {
            Icon {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                name: "check"
                size: 14
                color: entry.highlighted ? Theme.inkOnAccent : Theme.text
                visible: combo.currentIndex === entry.index
            }

            AppText {
                x: 30
                width: parent.width - 40
                anchors.verticalCenter: parent.verticalCenter
                text: entry.text
                token: Theme.control
                color: entry.highlighted ? Theme.inkOnAccent : Theme.text
                Accessible.ignored: true
            }
        }
    }

    popup: RisingPopup {
        id: popup

        readonly property real longest: {
            let most = 0;
            for (let i = 0; i < combo.count; ++i)
                most = Math.max(most, metrics.advanceWidth(combo.textAt(i)));
            return most;
        }

        FontMetrics {
            id: metrics

            font.pixelSize: Theme.control.size
        }

        name: combo.name
        // Also on the box itself, which it covers.
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        margins: 6
        padding: 5
        width: Math.max(combo.width + 10, Math.min(longest + 62, 420))
        height: Math.min(combo.count, 9) * combo.entryHeight + 10
        x: -5
        restY: Math.round((combo.height - combo.entryHeight) / 2) - 5 - Math.min(Math.max(combo.currentIndex, 0), 8) * combo.entryHeight

        contentItem: ListView {
            id: list

            clip: true
            model: combo.delegateModel
            currentIndex: combo.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            T.ScrollBar.vertical: AppScrollBar {}
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A pop-up choice. The list opens over the box with the current value under the pointer. The wheel scrolls the page
/// and does not change the value. Typing selects an entry. Without entries the list does not open.
T.ComboBox {
    id: combo

    property bool isSmall: false
    property bool isRaised: false
    /// Name for assistive technology.
    property string name

    readonly property int entryHeight: 30
    /// What was typed without a pause, to choose an entry.
    property string typed

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
        const current = popup.visible ? highlightedIndex : currentIndex;
        const isFirst = typed === "";
        typed += event.text;
        typingPause.restart();
        let entry = entryBeginning(typed, isFirst ? current + 1 : Math.max(0, current));
        // A character typed again leads to the next entry that begins with it.
        if (entry < 0 && typed.toLowerCase() === event.text.toLowerCase().repeat(typed.length))
            entry = entryBeginning(event.text, current + 1);
        if (entry >= 0)
            choose(entry);
        return true;
    }

    /// The first entry from `start` on, and round to it, that begins so, in capitals or not; -1 for none.
    function entryBeginning(text: string, start: int): int {
        for (let step = 0; step < count; ++step) {
            const entry = (start + step) % count;
            if (textAt(entry).toLowerCase().startsWith(text.toLowerCase()))
                return entry;
        }
        return -1;
    }

    /// With a closed list the handler of activated() changes the value, so the binding of currentIndex survives.
    function choose(entry: int) {
        if (!popup.visible && entry !== currentIndex)
            activated(entry);
        // With an open list these only move the highlight.
        while (popup.visible && highlightedIndex < entry)
            incrementCurrentIndex();
        while (popup.visible && highlightedIndex > entry)
            decrementCurrentIndex();
    }

    /// Return opens the list; in a sheet it presses the primary button. With Ctrl it belongs to the form.
    function returnPressed(event: KeyEvent) {
        event.accepted = !popup.visible && !(event.modifiers & Qt.ControlModifier);
        if (!event.accepted)
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
    // In Qt 6.4 the role has no value, and entries are not announced because none of them has the focus.
    Accessible.description: popup.visible && highlightedIndex >= 0 ? textAt(highlightedIndex) : displayText
    Accessible.onPressAction: openList()
    Keys.onReturnPressed: event => combo.returnPressed(event)
    Keys.onEnterPressed: event => combo.returnPressed(event)
    Keys.onPressed: event => event.accepted = combo.isSpaceForNothing(event) || combo.hasTyped(event)
    Keys.onReleased: event => event.accepted = combo.isSpaceForNothing(event)

    Timer {
        id: typingPause

        interval: Theme.typingPause
        onTriggered: combo.typed = ""
    }

    // Without entries this keeps a press from the box, which would open the list.
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

        TipSlot {
            text: combo.displayText
            isShown: combo.hovered && !combo.popup.visible && (combo.contentItem as AppText)?.truncated === true
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

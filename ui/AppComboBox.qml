pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// A pop-up choice. The list opens over the box with the current value under the pointer; the wheel scrolls the page,
/// not the value; typing selects.
T.ComboBox {
    id: combo

    property bool isSmall: false
    property bool isRaised: false
    /// Name for assistive technology.
    property string name

    readonly property int entryHeight: 30
    property string typed

    function selectTyped(character: string) {
        typed += character.toLowerCase();
        typingPause.restart();
        for (let i = 0; i < count; ++i) {
            if (textAt(i).toLowerCase().startsWith(typed)) {
                if (popup.visible) {
                    list.currentIndex = i;
                } else if (i !== currentIndex) {
                    currentIndex = i;
                    activated(i);
                }
                return;
            }
        }
    }

    implicitWidth: 160
    implicitHeight: isSmall ? Theme.smallControlHeight : Theme.controlHeight
    leftPadding: isSmall ? 8 : 10
    rightPadding: 26
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    wheelEnabled: false
    Accessible.name: name
    Accessible.onPressAction: popup.open()
    Keys.onReturnPressed: event => {
        if (!popup.visible)
            popup.open();
        else
            event.accepted = false;
    }
    Keys.onPressed: event => {
        if (event.text.length === 1 && event.text > " ") {
            combo.selectTyped(event.text);
            event.accepted = true;
        }
    }

    Timer {
        id: typingPause

        interval: 800
        onTriggered: combo.typed = ""
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
            visible: combo.hovered && (combo.contentItem as AppText)?.truncated === true
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

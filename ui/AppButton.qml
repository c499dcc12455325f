import QtQuick
import Tessaly.Ui

/// A push button in one of the kinds of the design. `isRaised` is for sheets.
PushButton {
    id: button

    enum Kind { Plain, Primary, Destructive, DestructiveFill }

    property int kind: AppButton.Plain
    property bool isSmall: false
    property bool isRaised: false
    property string iconName
    /// Opens a menu, and has a mark for that behind its text.
    property bool isMenu: false
    /// Shows a check mark in place of the text.
    property bool isDone: false

    readonly property bool isFilled: kind === AppButton.Primary || kind === AppButton.DestructiveFill
    readonly property color restFill: kind === AppButton.Primary ? Theme.accent : kind === AppButton.DestructiveFill ? Theme.destructiveFill : isRaised ? Theme.buttonRestRaised : Theme.buttonRest
    readonly property color hoverFill: kind === AppButton.Primary ? Theme.accentHover : kind === AppButton.DestructiveFill ? Theme.destructiveFill : Theme.buttonHover
    readonly property color pressedFill: kind === AppButton.Primary ? Theme.accentPressed : kind === AppButton.DestructiveFill ? Theme.destructiveFill : Theme.buttonPressed
    readonly property color fill: !enabled ? (isFilled ? Theme.track : Theme.transparent) : down ? pressedFill : hovered ? hoverFill : restFill
    readonly property color ink: !enabled ? Theme.textDisabled : isFilled ? Theme.inkOnAccent : kind === AppButton.Destructive ? (hovered ? Theme.destructiveHover : Theme.destructive) : Theme.text

    // On whole pixels, so that edges stay sharp and line up.
    implicitWidth: Math.max(56, Math.ceil(implicitContentWidth) + leftPadding + rightPadding)
    implicitHeight: isSmall ? Theme.smallControlHeight : Theme.controlHeight
    // From the outer edge, the border included.
    leftPadding: isSmall ? 11 : 15
    rightPadding: leftPadding

    background: Rectangle {
        radius: button.isSmall ? Theme.smallRadius : Theme.controlRadius
        color: button.fill
        border.width: 1
        border.color: button.isFilled ? button.fill : button.enabled ? Theme.borderControl : Theme.border
        transform: PixelSnap {}

        Behavior on color {
            ColorAnimation {
                duration: Theme.fast
            }
        }

        FocusRing {
            visible: button.visualFocus
            targetRadius: parent.radius
        }
    }

    contentItem: Item {
        implicitWidth: content.implicitWidth
        implicitHeight: content.implicitHeight

        Row {
            id: content

            anchors.centerIn: parent
            spacing: 7
            opacity: button.isDone ? 0 : 1

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                name: button.iconName !== "" ? button.iconName : "circle"
                visible: button.iconName !== ""
                color: button.isFilled ? Theme.inkOnAccent : Theme.textSecondary
            }

            AppText {
                visible: text !== ""
                text: button.text
                token: button.isFilled ? Theme.buttonPrimary : button.isSmall ? Theme.captionMedium : Theme.button
                color: button.ink
                Accessible.ignored: true
            }

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.isMenu
                name: "chevron-down"
                size: 14
                color: Theme.textSecondary
            }
        }

        Icon {
            anchors.centerIn: parent
            name: "check"
            visible: button.isDone
            color: button.ink
        }
    }
}

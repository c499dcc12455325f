import QtQuick

/// Inside a text: shows all of it in a tooltip while part of it is cut off.
TipSlot {
    id: tip

    readonly property Text label: parent as Text
    readonly property bool isCut: label !== null && (label.truncated || (label.wrapMode === Text.NoWrap && label.implicitWidth > label.width))

    text: label?.text ?? ""
    isShown: hover.hovered && isCut

    HoverHandler {
        id: hover

        enabled: tip.isCut
    }
}

import QtQuick

/// Inside a text: shows all of it in a tooltip while part of it is cut off.
Item {
    id: tip

    readonly property Text label: parent as Text
    readonly property bool isCut: label !== null && (label.truncated || (label.wrapMode === Text.NoWrap && label.implicitWidth > label.width))

    readonly property bool isShown: hover.hovered && isCut

    anchors.fill: parent

    HoverHandler {
        id: hover

        enabled: tip.isCut
    }

    // Made when it is wanted: lists have many texts.
    Loader {
        anchors.fill: parent
        active: tip.isShown
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: Item {
            AppToolTip {
                text: tip.label?.text ?? ""
                visible: true
            }
        }
        // qmllint enable unqualified
    }
}

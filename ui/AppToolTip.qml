import QtQuick
import QtQuick.Templates as T

/// A short explanation under the pointer.
T.ToolTip {
    id: tip

    readonly property real longestLine: Math.ceil((unwrapped.item as AppText)?.implicitWidth ?? contentItem.implicitWidth)

    delay: Theme.toolTipDelay
    timeout: -1
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 6 : 0
    margins: 6
    leftPadding: 9
    rightPadding: 9
    topPadding: 5
    bottomPadding: 5
    implicitWidth: Math.min(longestLine + leftPadding + rightPadding, 360)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    // Qt adds up the lines of a text that may wrap.
    Loader {
        id: unwrapped

        active: tip.text.includes("\n")
        visible: false
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: AppText {
            text: tip.text
            token: Theme.caption
            Accessible.ignored: true
        }
        // qmllint enable unqualified
    }

    background: PopupFrame {
        radius: Theme.actionRadius
    }

    contentItem: AppText {
        text: tip.text
        token: Theme.caption
        isMultiline: true
        color: Theme.text
    }
}

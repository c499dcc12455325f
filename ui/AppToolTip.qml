import QtQuick
import QtQuick.Templates as T

/// A short explanation under the pointer.
T.ToolTip {
    id: tip

    delay: Theme.toolTipDelay
    timeout: -1
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 6 : 0
    margins: 6
    leftPadding: 9
    rightPadding: 9
    topPadding: 5
    bottomPadding: 5
    implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 360)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

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

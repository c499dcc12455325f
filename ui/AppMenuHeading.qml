import QtQuick
import QtQuick.Templates as T

/// The name of a group of entries of a menu, beneath a line.
T.MenuSeparator {
    id: heading

    property string text

    implicitWidth: contentItem.implicitWidth + 20
    implicitHeight: 9 + 28
    leftPadding: 10
    rightPadding: 10
    topPadding: 9
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    background: Item {
        Separator {
            x: 9
            y: 4
            width: parent.width - 18
        }
    }

    contentItem: AppText {
        text: heading.text
        token: Theme.captionMedium
        color: Theme.textSecondary
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}

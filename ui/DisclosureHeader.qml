import QtQuick

/// The header of a group that opens and closes; the whole header toggles. An empty (void) group does not
/// open.
PushButton {
    id: header

    property bool isOpen: false
    property bool isNested: false
    property bool isVoid: false
    /// Stands after the text: how many it holds, and which of them need attention.
    property string note
    property string alarm
    /// Items at the header's right end.
    default property alias trailing: trailingRow.data

    implicitWidth: 240
    implicitHeight: isNested ? Theme.nestedGroupHeight : Theme.groupHeight
    leftPadding: isNested ? 46 : 16
    rightPadding: 8
    enabled: !isVoid || trailingRow.children.length > 0
    // Qt 6.4 has no accessible state for this.
    Accessible.description: isVoid ? "" : (note === "" ? "" : note + ", ") + (alarm === "" ? "" : alarm + ", ") + (isOpen ? Language.text("已展开", "expanded") : Language.text("已折叠", "collapsed"))
    Keys.onRightPressed: if (!isOpen)
        header.clicked()
    Keys.onLeftPressed: if (isOpen)
        header.clicked()

    background: Item {
        FocusRing {
            visible: header.visualFocus
            anchors.margins: 2
            gap: -4
        }
    }

    contentItem: Item {
        Icon {
            id: chevron

            anchors.verticalCenter: parent.verticalCenter
            x: 1
            name: "chevron-right"
            color: header.isVoid ? Theme.textDisabled : Theme.textTertiary
            rotation: header.isOpen ? 90 : 0

            Behavior on rotation {
                NumberAnimation {
                    duration: Theme.switching
                    easing.type: Easing.OutCubic
                }
            }
        }

        AppText {
            id: label

            readonly property real room: parent.width - 30 - trailingRow.width - 8

            anchors.verticalCenter: parent.verticalCenter
            x: 30
            width: header.note === "" ? room : Math.min(Math.ceil(implicitWidth), room - notes.width - 12)
            text: header.text
            token: header.isNested ? Theme.button : Theme.groupLabel
            color: header.isVoid ? Theme.textTertiary : header.isNested && !header.isOpen ? Theme.textSecondary : Theme.text
            Accessible.ignored: true

            ElidedTip {}
        }

        Row {
            id: notes

            anchors.verticalCenter: parent.verticalCenter
            x: label.x + label.width + 12
            visible: header.note !== ""

            AppText {
                text: header.alarm === "" ? header.note : header.note + " · "
                token: Theme.caption
                color: Theme.textSecondary
                Accessible.ignored: true
            }
            AppText {
                visible: text !== ""
                text: header.alarm
                token: Theme.captionMedium
                color: Theme.destructive
                Accessible.ignored: true
            }
        }

        Row {
            id: trailingRow

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
        }
    }
}

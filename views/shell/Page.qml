import QtQuick
import Tessaly.Ui

/// The frame of every screen: one scroll area with the title and, beneath it, the children, 22 points apart.
Rectangle {
    id: page

    /// Without a title the first child is the page's head.
    property string title
    /// Whether the content stops growing at 1080 points.
    property bool isLimited: true
    /// Shown in a line at the foot that does not scroll; no line while empty.
    property string status
    default property alias content: column.data
    property alias scroll: scroll
    property alias statusLine: statusLine
    readonly property real contentWidth: column.width
    /// Room that is left free at the right, for what stands there.
    property real sideRoom: 0

    color: Theme.bg

    ScrollPage {
        id: scroll

        objectName: "page"
        anchors.fill: parent
        anchors.rightMargin: page.sideRoom
        anchors.bottomMargin: statusBar.visible ? statusBar.height : 0
        contentHeight: column.implicitHeight + 2 * Theme.pagePadding

        Column {
            id: column

            x: Theme.pagePadding
            y: Theme.pagePadding
            width: Math.min(scroll.width - 2 * Theme.pagePadding, page.isLimited ? Theme.contentLimit : Infinity)
            spacing: Theme.pageGap

            PageTitle {
                width: parent.width
                text: page.title
                visible: page.title !== ""
            }
        }
    }

    Item {
        id: statusBar

        anchors.bottom: parent.bottom
        width: parent.width - page.sideRoom
        height: Theme.statusHeight
        visible: page.status !== ""

        Separator {
            width: parent.width
        }

        StatusLine {
            id: statusLine

            x: Theme.pagePadding
            width: parent.width - 2 * Theme.pagePadding
            anchors.verticalCenter: parent.verticalCenter
            message: page.status
        }
    }
}

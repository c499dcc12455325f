import QtQuick
import Tessaly.Ui

/// The header of the recently deleted documents.
Item {
    id: header

    required property string note
    required property bool isExpanded

    readonly property bool isActive: hover.hovered || disclosure.visualFocus || destroyAction.visualFocus

    signal expansionRequested(bool isOpen)
    signal destroyAllRequested

    function takeFocus() {
        disclosure.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Theme.groupHeight

    HoverHandler {
        id: hover
    }

    DisclosureHeader {
        id: disclosure

        anchors.fill: parent
        text: Language.text("最近删除", "Recently deleted")
        isOpen: header.isExpanded
        Accessible.name: text + ", " + header.note
        onClicked: header.expansionRequested(!header.isExpanded)
    }

    AppText {
        x: 46 + measure.implicitWidth + 12
        width: destroyAction.x - x - 8
        anchors.verticalCenter: parent.verticalCenter
        text: header.note
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    // As wide as the header's text, which tells nobody its width.
    AppText {
        id: measure

        text: disclosure.text
        token: Theme.groupLabel
        visible: false
    }

    RowAction {
        id: destroyAction

        x: header.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        text: Language.text("全部彻底删除", "Delete all forever")
        isDestructive: true
        isRowActive: header.isActive
        onClicked: header.destroyAllRequested()
    }
}

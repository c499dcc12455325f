import QtQuick
import Tessaly.Ui

/// A row of the day list: mark, title, time and tag, actions.
Item {
    id: item

    required property int index
    /// Among all schedules of the day; less than 0 while it shows none.
    required property int place
    required property string title
    required property bool isDone
    required property string timeRange
    required property string tag
    required property string colorKey
    property bool isLast: false
    /// What lies beneath its contents.
    property alias ground: ground
    readonly property real groundRadius: isLast ? Theme.cardRadius - 1 : 0

    readonly property bool hasFocus: activeFocus || actions.hasFocus
    readonly property bool isActive: hover.hovered || activeFocus || actions.hasVisualFocus

    signal openRequested
    signal editRequested
    signal deleteRequested

    function focusEdit(reason: int) {
        actions.focusEdit(reason);
    }

    function focusDelete(reason: int) {
        actions.focusDelete(reason);
    }

    function open(event: KeyEvent) {
        event.accepted = true;
        if (!event.isAutoRepeat)
            openRequested();
    }

    visible: place >= 0
    height: Theme.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: title + Language.text("，", ", ") + time.text + (isDone ? Language.text("，已完成", ", done") : "")
    Accessible.focusable: true
    Accessible.onPressAction: openRequested()
    Keys.onReturnPressed: event => open(event)
    Keys.onEnterPressed: event => open(event)
    Keys.onDeletePressed: event => {
        event.accepted = activeFocus;
        if (activeFocus)
            deleteRequested();
    }

    HoverHandler {
        id: hover
    }

    // The card's own rounding shows below the last row.
    Rectangle {
        id: ground

        width: parent.width
        height: parent.height
        radius: item.groundRadius
        color: item.isActive ? Theme.hover : Theme.transparent

        Rectangle {
            width: parent.width
            height: parent.height / 2
            visible: item.isLast
            color: parent.color
        }
    }

    Separator {
        width: parent.width
    }

    FocusRing {
        visible: item.activeFocus
        targetRadius: 8
        gap: -2
    }

    ColorMark {
        id: mark

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.scheduleColor(item.colorKey)
    }

    AppText {
        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.right: time.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: item.isDone ? "✓ " + item.title : item.title
        token: Theme.rowTitle

        ElidedTip {}
    }

    AppText {
        id: time

        anchors.right: actions.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 168
        text: item.tag === "" ? item.timeRange : item.timeRange + " · " + item.tag
        color: Theme.textSecondary
        token: Theme.control

        ElidedTip {}
    }

    RowActions {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        itemTitle: item.title
        isRowActive: item.isActive
        onEditRequested: item.editRequested()
        onDeleteRequested: item.deleteRequested()
    }
}

pragma ComponentBehavior: Bound

import QtQuick

/// A choice among few labels. Arrow keys change the choice at once; it is one tab stop.
// Not a control: in Qt 6.4 a plain control ignores the attached role.
FocusScope {
    id: control

    required property list<string> labels
    property int currentIndex: 0
    /// Padding at each side of a label.
    property int segmentPadding: 14
    /// Name for assistive technology.
    property string name

    /// The focus came by a click and shows no ring.
    property bool isClicked: false

    signal chosen(int index)

    function choose(index: int) {
        if (index < 0 || index >= labels.length || index === currentIndex)
            return;
        thumb.isSliding = true;
        control.chosen(index);
    }

    implicitWidth: row.implicitWidthOfLabels + 4
    implicitHeight: Theme.controlHeight
    activeFocusOnTab: true
    onActiveFocusChanged: {
        if (!activeFocus)
            isClicked = false;
    }
    Keys.onLeftPressed: choose(currentIndex - 1)
    Keys.onRightPressed: choose(currentIndex + 1)
    Keys.onUpPressed: choose(currentIndex - 1)
    Keys.onDownPressed: choose(currentIndex + 1)
    Accessible.role: Accessible.PageTabList
    Accessible.name: name

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: Theme.segment

        FocusRing {
            visible: control.activeFocus && !control.isClicked
        }
    }

    Rectangle {
        id: thumb

        readonly property Item segment: segments.count > 0 ? segments.itemAt(control.currentIndex) : null
        // It slides when the user chooses, not when the labels change their widths.
        property bool isSliding: false

        x: row.x + (segment?.x ?? 0)
        y: 2
        width: segment?.width ?? 0
        height: control.height - 4
        radius: Theme.actionRadius
        color: Theme.segmentOn
        border.width: 0.5
        border.color: Theme.segmentShadow
        visible: segment !== null

        Behavior on x {
            enabled: thumb.isSliding

            NumberAnimation {
                duration: Theme.switching
                easing.type: Easing.OutCubic
                onStopped: thumb.isSliding = false
            }
        }

        Rectangle {
            z: -1
            y: 1
            width: parent.width
            height: parent.height
            radius: parent.radius
            color: Theme.segmentShadow
        }
    }

    Row {
        id: row

        x: 2
        y: 2

        Repeater {
            id: segments

            model: control.labels

            Item {
                id: segment

                required property string modelData
                required property int index
                readonly property bool isOn: index === control.currentIndex

                width: control.width > row.implicitWidthOfLabels + 4 ? (control.width - 4) / control.labels.length : label.implicitWidth + 2 * control.segmentPadding
                height: control.height - 4
                implicitWidth: label.implicitWidth + 2 * control.segmentPadding
                // The chosen segment has the focus, so that screen readers announce it.
                Component.onCompleted: focus = isOn
                onIsOnChanged: {
                    if (isOn)
                        focus = true;
                }
                Accessible.role: Accessible.PageTab
                Accessible.focusable: true
                Accessible.name: modelData
                Accessible.selectable: true
                Accessible.selected: isOn
                Accessible.onPressAction: control.choose(index)

                AppText {
                    id: label

                    anchors.centerIn: parent
                    text: segment.modelData
                    token: Theme.button
                    color: segment.isOn ? Theme.text : Theme.textSecondary
                    Accessible.ignored: true
                }

                MouseArea {
                    anchors.fill: parent
                    onClicked: {
                        control.isClicked = true;
                        control.forceActiveFocus(Qt.MouseFocusReason);
                        control.choose(segment.index);
                    }
                }
            }
        }

        readonly property real implicitWidthOfLabels: {
            let sum = 0;
            for (let i = 0; i < segments.count; ++i)
                sum += segments.itemAt(i)?.implicitWidth ?? 0;
            return sum;
        }
    }
}

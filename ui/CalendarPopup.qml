pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// A month to choose a day from, and the time beneath. Arrows move by day, Page keys by month; a choice applies at
/// once.
RisingPopup {
    id: popup

    required property DateTimeEditor editor
    property alias firstWeekday: month.firstWeekday
    property date now

    width: 268
    padding: 12
    margins: 6
    focus: true
    implicitHeight: contentItem.implicitHeight + 24
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    // Not when it has faded in: by then Tab may have led on.
    onAboutToShow: days.focus = true

    MonthSheet {
        id: month

        value: popup.editor.value
        isEnglish: popup.editor.isEnglish
    }

    contentItem: Column {
        spacing: 4

        Item {
            width: parent.width
            height: Theme.controlHeight

            AppText {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                text: month.title
                token: Theme.buttonPrimary
            }

            Row {
                anchors.right: parent.right

                IconButton {
                    iconName: "chevron-left"
                    text: Language.text("上一页", "Previous")
                    onClicked: month.turn(-1)
                }

                IconButton {
                    iconName: "chevron-right"
                    text: Language.text("下一页", "Next")
                    onClicked: month.turn(1)
                }
            }
        }

        Row {
            Repeater {
                model: month.weekdayLetters

                AppText {
                    required property string modelData

                    width: 244 / 7
                    text: modelData
                    token: Theme.mini
                    horizontalAlignment: Text.AlignHCenter
                    color: Theme.textTertiary
                }
            }
        }

        Grid {
            id: days

            columns: 7
            // Takes the keys from the first moment, before the popup has faded in.
            focus: true
            activeFocusOnTab: true
            // Screen readers announce the day that the arrow keys lead to.
            Accessible.role: Accessible.Table
            Accessible.name: month.chosenDay < 0 ? month.title : month.dayName(month.chosenDay)
            Accessible.focusable: true
            Keys.onLeftPressed: popup.editor.moveDay(-1)
            Keys.onRightPressed: popup.editor.moveDay(1)
            Keys.onUpPressed: popup.editor.moveDay(-7)
            Keys.onDownPressed: popup.editor.moveDay(7)
            Keys.onReturnPressed: popup.close()
            Keys.onEnterPressed: popup.close()
            Keys.onSpacePressed: popup.close()
            Keys.onPressed: event => {
                if (event.key !== Qt.Key_PageUp && event.key !== Qt.Key_PageDown)
                    return;
                popup.editor.moveMonth(event.key === Qt.Key_PageUp ? -1 : 1);
                event.accepted = true;
            }

            Repeater {
                model: month.dayNumbers

                Item {
                    id: cell

                    required property int modelData
                    required property int index
                    readonly property bool isChosen: index === month.chosenDay
                    readonly property bool isOther: index < month.firstOfMonth || index > month.lastOfMonth
                    readonly property bool isToday: month.title !== "" && index === month.positionOf(popup.now)

                    width: 244 / 7
                    height: 28
                    Accessible.role: Accessible.Button
                    Accessible.name: month.dayName(index)
                    Accessible.selected: isChosen
                    Accessible.onPressAction: popup.editor.chooseDate(month.dateAt(index))

                    Rectangle {
                        anchors.centerIn: parent
                        width: 28
                        height: 28
                        radius: 14
                        color: cell.isChosen ? Theme.accent : cellHover.hovered ? Theme.hover : Theme.transparent

                        FocusRing {
                            visible: cell.isChosen && days.activeFocus
                            gap: -1
                            targetRadius: 14
                        }
                    }

                    AppText {
                        anchors.centerIn: parent
                        text: cell.modelData
                        token: cell.isChosen || cell.isToday ? Theme.captionBold : Theme.caption
                        color: cell.isChosen ? Theme.inkOnAccent : cell.isToday ? Theme.accentText : cell.isOther ? Theme.textTertiary : Theme.text
                        Accessible.ignored: true
                    }

                    HoverHandler {
                        id: cellHover
                    }

                    MouseArea {
                        anchors.fill: parent
                        onClicked: {
                            popup.editor.chooseDate(month.dateAt(cell.index));
                            days.forceActiveFocus(Qt.MouseFocusReason);
                        }
                        // The second press of a double click was meant for what the popup came over.
                        onDoubleClicked: {}
                    }
                }
            }
        }

        Separator {
            width: parent.width
            visible: !popup.editor.isDateOnly
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 6
            spacing: 8
            visible: !popup.editor.isDateOnly

            TimePartField {
                number: popup.editor.hour
                most: 23
                name: Language.text("时", "Hour")
                onEntered: number => popup.editor.setTime(number, popup.editor.minute)
                onStepped: delta => popup.editor.stepHour(delta)
            }

            AppText {
                text: ":"
                height: Theme.smallControlHeight
                token: Theme.control
            }

            TimePartField {
                number: popup.editor.minute
                most: 59
                wheelStep: 5
                name: Language.text("分", "Minute")
                onEntered: number => popup.editor.setTime(popup.editor.hour, number)
                // Within the hour.
                onStepped: delta => popup.editor.setTime(popup.editor.hour, (popup.editor.minute + delta + 60) % 60)
            }
        }
    }
}

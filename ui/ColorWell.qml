import QtQuick
import QtQuick.Templates as T
import Tessaly.Ui

/// Shows a colour and lets the user choose one of the palette or type a hex code. The value is "#RRGGBB", upper-case.
PushButton {
    id: well

    property string hex: Theme.palette[0][1]
    /// Name for assistive technology.
    property string name

    readonly property list<string> colorNames: [Language.text("蓝色", "Blue"), Language.text("紫色", "Purple"), Language.text("绿色", "Green"), Language.text("橙色", "Orange"), Language.text("粉色", "Pink"), Language.text("青色", "Teal"), Language.text("红色", "Red"), Language.text("靛蓝色", "Indigo")]
    readonly property int paletteIndex: Theme.palette.findIndex(entry => entry[1] === hex)

    /// The user chose a colour; an incomplete or wrong code is not applied.
    signal edited(string hex)

    implicitWidth: 56
    implicitHeight: Theme.controlHeight
    Accessible.role: Accessible.ButtonDropDown
    Accessible.name: name
    Accessible.description: paletteIndex < 0 ? hex : colorNames[paletteIndex]
    onClicked: {
        chooser.active = true;
        (chooser.item as RisingPopup).open();
    }

    background: FieldFrame {
        color: well.down ? Theme.buttonPressed : well.hovered ? Theme.buttonHover : Theme.buttonRest
        isFocused: chooser.item !== null

        FocusRing {
            visible: well.visualFocus
        }
    }

    contentItem: Item {
        ColorMark {
            x: 6
            anchors.verticalCenter: parent.verticalCenter
            size: 20
            radius: 5
            color: Theme.scheduleColor(well.hex)
        }

        Icon {
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron-down"
            size: 14
        }
    }

    // Only while it is shown.
    Loader {
        id: chooser

        active: false
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: RisingPopup {
            id: popup

            // There is a ring on the colours, and back on the well, if the well had one.
            property int openerReason: Qt.MouseFocusReason

            parent: well
            name: well.name
            restY: well.height + 4
            x: well.width - width
            width: 194
            implicitHeight: contentItem.implicitHeight + 24
            padding: 12
            margins: 6
            focus: true
            closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
            onAboutToShow: {
                openerReason = FocusHandover.reasonAfter(well);
                (swatches.itemAt(Math.max(0, well.paletteIndex)) as Item)?.forceActiveFocus(Qt.PopupFocusReason);
            }
            onClosed: {
                FocusHandover.give(well, openerReason);
                chooser.active = false;
            }

            contentItem: Column {
                spacing: 10

                Grid {
                    columns: 4
                    spacing: 8

                    Repeater {
                        id: swatches

                        model: Theme.palette.length

                        PushButton {
                            id: swatch

                            required property int index
                            readonly property string lightHex: Theme.palette[index][1]

                            width: 36
                            height: 28
                            focus: index === 0
                            Accessible.name: well.colorNames[index]
                            Accessible.selectable: true
                            Accessible.selected: index === well.paletteIndex
                            Keys.onLeftPressed: (swatches.itemAt(index - 1) as Item)?.forceActiveFocus(Qt.TabFocusReason)
                            Keys.onRightPressed: (swatches.itemAt(index + 1) as Item)?.forceActiveFocus(Qt.TabFocusReason)
                            Keys.onUpPressed: (swatches.itemAt(index - 4) as Item)?.forceActiveFocus(Qt.TabFocusReason)
                            Keys.onDownPressed: (swatches.itemAt(index + 4) as Item)?.forceActiveFocus(Qt.TabFocusReason)
                            onClicked: {
                                well.edited(lightHex);
                                popup.close();
                            }
                            onActiveFocusChanged: {
                                if (activeFocus && focusReason === Qt.PopupFocusReason)
                                    focusReason = popup.openerReason;
                            }
                            Keys.onReturnPressed: popup.close()
                            Keys.onEnterPressed: popup.close()

                            background: Rectangle {
                                radius: Theme.actionRadius
                                color: Theme.scheduleColor(swatch.lightHex)

                                FocusRing {
                                    visible: swatch.visualFocus
                                    targetRadius: Theme.actionRadius
                                    gap: 1
                                }
                            }

                            contentItem: Item {
                                Icon {
                                    anchors.centerIn: parent
                                    name: "check"
                                    color: Theme.inkOnMark
                                    visible: swatch.index === well.paletteIndex
                                }
                            }
                        }
                    }
                }

                AppTextField {
                    width: parent.width
                    isSmall: true
                    text: well.hex
                    Accessible.name: well.name
                    onTextEdited: {
                        const digits = text.trim().replace(/^#/, "");
                        if (/^[0-9a-fA-F]{6}$/.test(digits))
                            well.edited("#" + digits.toUpperCase());
                    }
                    onAccepted: popup.close()
                    onActiveFocusChanged: if (!activeFocus)
                        text = Qt.binding(() => well.hex)
                }
            }
        }
        // qmllint enable unqualified
    }
}

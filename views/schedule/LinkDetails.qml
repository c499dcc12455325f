import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// One linked calendar: what it is, how it was last read, what the user chooses for it, and what was left out.
Column {
    id: view

    required property LinkDetailsModel details

    spacing: 16

    Column {
        id: facts

        readonly property real labelWidth: Math.max(80, update.neededLabelWidth)

        width: parent.width
        spacing: 4

        Item {
            width: parent.width
            height: Theme.controlHeight

            AppText {
                width: facts.labelWidth
                anchors.verticalCenter: parent.verticalCenter
                text: Language.text("名称", "Name")
                token: Theme.control
                color: Theme.textSecondary
                Accessible.ignored: true
            }

            AppTextField {
                id: nameField

                x: facts.labelWidth
                width: colorWell.x - x - 8
                name: Language.text("名称", "Name")
                text: view.details.name
                keepsReturn: true
                onAccepted: view.details.rename(text)
                onActiveFocusChanged: {
                    if (activeFocus)
                        return;
                    view.details.rename(text);
                    text = Qt.binding(() => view.details.name);
                }
            }

            ColorWell {
                id: colorWell

                anchors.right: parent.right
                name: Language.text("颜色", "Color")
                hex: Theme.palette.find(entry => entry[0] === view.details.colorKey)?.[1] ?? view.details.colorKey
                onEdited: hex => view.details.setColor(hex)
            }
        }

        AppButton {
            x: facts.labelWidth
            width: Math.min(implicitWidth, parent.width - x)
            visible: view.details.ownName !== ""
            isSmall: true
            isRaised: true
            text: Language.text("使用日历自己的名称“%1”", "Use the calendar’s own name, “%1”").arg(view.details.ownName)
            onClicked: view.details.rename(view.details.ownName)
        }

        AppButton {
            x: facts.labelWidth
            visible: view.details.hasColor
            isSmall: true
            isRaised: true
            text: Language.text("不用自选颜色", "Use no color of its own")
            onClicked: view.details.removeColor()
        }

        SyncFact {
            labelWidth: facts.labelWidth
            label: Language.text("链接", "Link")
            value: view.details.link
        }

        SyncFact {
            id: update

            labelWidth: facts.labelWidth
            label: Language.text("上次更新", "Last update")
            value: view.details.lastUpdate
        }

        SyncFact {
            labelWidth: facts.labelWidth
            label: Language.text("读取", "Read")
            value: view.details.contents
        }
    }

    AppText {
        width: parent.width
        visible: text !== ""
        isMultiline: true
        text: view.details.failure
        token: Theme.control
        color: Theme.destructive
    }

    LinkOption {
        width: parent.width
        text: Language.text("自动更新", "Keep up to date")
        hint: view.details.keeping
        isOn: view.details.isKeptUpToDate
        onChosen: isOn => view.details.setKeptUpToDate(isOn)
    }

    LinkOption {
        width: parent.width
        text: Language.text("读取重复日程", "Read repeated events")
        hint: view.details.repetitions
        isOn: view.details.readsRepetitions
        onChosen: isOn => view.details.setReadsRepetitions(isOn)
    }

    SkippedList {
        width: parent.width
        visible: view.details.skippedCount > 0
        details: view.details
    }
}

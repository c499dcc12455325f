import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Which hours the week shows, and which calendars.
Sheet {
    id: sheet

    signal done

    function hourText(hour: int): string {
        return String(hour).padStart(2, "0") + ":00";
    }

    title: Language.text("显示设置", "Display settings")
    sheetWidth: 460
    primaryButton: doneButton
    onLeaving: sheet.done()

    foot: [
        AppButton {
            isRaised: true
            text: Language.text("全部显示", "Show all")
            onClicked: groups.chooseAll()
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: Language.text("完成", "Done")
            onClicked: sheet.done()
        }
    ]

    CalendarGroupsModel {
        id: groups

        store: PlannerStore
        purpose: CalendarGroupsModel.Display
    }

    Column {
        width: parent?.width ?? 0
        spacing: 8

        AppText {
            text: Language.text("周视图显示时间", "Week view hours")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
        }

        Row {
            spacing: 10

            AppText {
                anchors.verticalCenter: parent.verticalCenter
                text: Language.text("开始", "Start")
                token: Theme.control
                color: Theme.textSecondary
            }

            AppComboBox {
                width: 96
                isRaised: true
                name: Language.text("开始", "Start")
                model: Array.from({ length: 24 }, (_, hour) => sheet.hourText(hour))
                currentIndex: PlannerStore.displayStartHour
                onActivated: index => {
                    PlannerStore.setDisplayStartHour(index);
                    currentIndex = Qt.binding(() => PlannerStore.displayStartHour);
                }
            }

            AppText {
                anchors.verticalCenter: parent.verticalCenter
                text: Language.text("至", "to")
                token: Theme.control
                color: Theme.textSecondary
            }

            AppText {
                anchors.verticalCenter: parent.verticalCenter
                text: Language.text("结束", "End")
                token: Theme.control
                color: Theme.textSecondary
            }

            AppComboBox {
                width: 96
                isRaised: true
                name: Language.text("结束", "End")
                model: Array.from({ length: 24 }, (_, hour) => sheet.hourText(hour + 1))
                currentIndex: PlannerStore.displayEndHour - 1
                onActivated: index => {
                    PlannerStore.setDisplayEndHour(index + 1);
                    currentIndex = Qt.binding(() => PlannerStore.displayEndHour - 1);
                }
            }
        }
    }

    Column {
        width: parent?.width ?? 0
        spacing: 8

        AppText {
            text: Language.text("显示已导入日历", "Show imported calendars")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
        }

        CalendarLoadingBox {
            width: parent.width
            visible: groups.calendarCount === 0
        }

        CalendarChoiceBox {
            width: parent.width
            visible: groups.calendarCount > 0
            choices: groups.calendars
            onChosen: (row, isChosen) => groups.chooseCalendar(row, isChosen)
        }
    }

    Column {
        width: parent?.width ?? 0
        spacing: 8
        visible: groups.linkCount > 0

        AppText {
            text: Language.text("链接日历", "Linked calendars")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
        }

        CalendarChoiceBox {
            width: parent.width
            choices: groups.links
            isPlain: true
            onChosen: (row, isChosen) => groups.chooseLink(row, isChosen)
        }
    }

    Column {
        width: parent?.width ?? 0
        spacing: 8

        AppText {
            text: Language.text("周与月", "Week and month")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
        }

        DisplayChoiceList {
            width: parent.width
        }
    }

    Column {
        width: parent?.width ?? 0
        spacing: 8

        AppText {
            text: Language.text("日程提醒", "Schedule reminders")
            token: Theme.groupLabel
            Accessible.role: Accessible.Heading
        }

        LeadTimes {
            width: parent.width
        }
    }
}

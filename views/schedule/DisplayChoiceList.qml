pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// The choices for the week and the month: the first weekday, and what is shown besides.
Column {
    id: list

    readonly property DisplayChoices choices: PlannerStore.displayChoices
    /// 0 as the system has it, 1 Monday … 7 Sunday.
    readonly property list<int> weekdays: [0, 1, 7]
    readonly property int weekdayIndex: choices.firstWeekday === 7 ? 2 : choices.firstWeekday

    component Choice: AppCheckBox {
        width: list.width
    }

    Row {
        height: 36
        spacing: 10

        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("每周第一天", "First day of the week")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        AppComboBox {
            anchors.verticalCenter: parent.verticalCenter
            width: 150
            isRaised: true
            name: Language.text("每周第一天", "First day of the week")
            model: [Language.text("跟随系统", "As the system"), Language.text("星期一", "Monday"), Language.text("星期日", "Sunday")]
            currentIndex: list.weekdayIndex
            onActivated: index => {
                list.choices.firstWeekday = list.weekdays[index];
                currentIndex = Qt.binding(() => list.weekdayIndex);
            }
        }
    }

    Choice {
        text: Language.text("周视图不显示周六和周日", "Weeks without Saturday and Sunday")
        checked: list.choices.hidesWeekend
        onToggled: list.choices.hidesWeekend = checked
    }

    Choice {
        text: Language.text("周数（ISO 8601）", "Week numbers (ISO 8601)")
        checked: list.choices.showsWeekNumbers
        onToggled: list.choices.showsWeekNumbers = checked
    }

    Choice {
        text: Language.text("全天和跨天的日程放在时间上方", "All-day and multi-day schedules above the hours")
        checked: list.choices.hasAllDayRow
        onToggled: list.choices.hasAllDayRow = checked
    }

    Choice {
        text: Language.text("显示时间以外的日程只作标记", "Only mark schedules outside the shown hours")
        checked: list.choices.marksHiddenTimes
        onToggled: list.choices.marksHiddenTimes = checked
    }

    Choice {
        text: Language.text("农历、节气和中国的节假日", "Lunar days, solar terms and holidays of China")
        checked: list.choices.showsChineseCalendar
        onToggled: list.choices.showsChineseCalendar = checked
    }

    Choice {
        text: Language.text("点选的时间取整到刻钟", "Round chosen times to a quarter hour")
        checked: list.choices.roundsTaps
        onToggled: list.choices.roundsTaps = checked
    }
}

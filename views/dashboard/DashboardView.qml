pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Dashboard
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The overview: a greeting, three figures, the next schedule of today, the first goals and what is left of the day.
Page {
    id: screen

    /// The user wants to see the record on its screen, or the screen where there is no id.
    signal placeRequested(int section, string id)

    title: Language.text("概览", "Overview")

    DashboardViewModel {
        id: overview
        store: PlannerStore
    }

    TodayModel {
        id: todayModel
        store: PlannerStore
    }

    AppText {
        width: parent.width
        text: overview.greeting
        token: Theme.greeting
        color: Theme.textSecondary
    }

    Row {
        id: tiles

        /// On whole pixels, all three together as wide as the row.
        function widthOf(place: int): int {
            const free = width - 2 * spacing;
            return Math.round(free * (place + 1) / 3) - Math.round(free * place / 3);
        }

        width: parent.width
        spacing: 16

        Metric {
            id: toDos

            width: tiles.widthOf(0)
            title: Language.text("待办事项", "Open to-dos")
            value: overview.openReminderCount
            figureColor: Theme.orange
            onClicked: screen.placeRequested(ShellModel.Reminders, "")
        }
        Metric {
            width: tiles.widthOf(1)
            title: Language.text("今日剩余日程", "Remaining today")
            value: overview.remainingCount
            figureColor: Theme.blue
            onClicked: screen.placeRequested(ShellModel.Schedule, "")
        }
        Metric {
            width: tiles.widthOf(2)
            title: Language.text("进行中的目标", "Active goals")
            value: overview.activeGoalCount
            figureColor: Theme.purple
            onClicked: screen.placeRequested(ShellModel.Goals, "")
        }
    }

    Column {
        width: parent.width
        spacing: 10

        HeadingText {
            text: Language.text("今日下一项日程", "Next today")
        }
        NextSchedule {
            width: parent.width
            hasSchedule: overview.hasNext
            title: overview.nextTitle
            dateText: overview.nextDateText
            colorKey: overview.nextColor
            onChosen: screen.placeRequested(ShellModel.Schedule, overview.nextId)
        }
    }

    Column {
        width: parent.width
        spacing: 10

        HeadingText {
            text: Language.text("目标进度", "Goal progress")
        }
        GoalProgressList {
            width: parent.width
            goals: overview.goals
            count: overview.goalCount
            onChosen: id => screen.placeRequested(ShellModel.Goals, id)
        }
    }

    Column {
        width: parent.width
        spacing: 10
        visible: todayModel.count > 0

        HeadingText {
            text: Language.text("今天", "Today")
        }
        TodayList {
            width: parent.width
            today: todayModel
            onChosen: (section, id) => screen.placeRequested(section, id)
            onEmptied: toDos.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
}

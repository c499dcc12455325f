pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Dashboard
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The overview: a greeting, three figures, the next schedule of today and the first goals.
Page {
    id: screen

    title: Language.text("概览", "Overview")

    DashboardViewModel {
        id: overview
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
            width: tiles.widthOf(0)
            title: Language.text("待办事项", "Open to-dos")
            value: overview.openReminderCount
            figureColor: Theme.orange
        }
        Metric {
            width: tiles.widthOf(1)
            title: Language.text("今日剩余日程", "Remaining today")
            value: overview.remainingCount
            figureColor: Theme.blue
        }
        Metric {
            width: tiles.widthOf(2)
            title: Language.text("进行中的目标", "Active goals")
            value: overview.activeGoalCount
            figureColor: Theme.purple
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
        }
    }
}

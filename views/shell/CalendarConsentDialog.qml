pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Asks, once, whether the calendars of the system may be used. Return presses the button that has the focus.
Sheet {
    id: dialog

    function answer(isAllowed: bool) {
        dialog.close();
        PlannerStore.calendarSync.answerConsent(isAllowed);
    }

    title: Language.text("允许 Tessaly 使用此系统的日历？", "Allow Tessaly to use the calendars of this system?")
    titleToken: Theme.headline
    sheetWidth: 500
    bodySpacing: 16
    initialFocus: refuseButton
    onLeaving: answer(false)

    foot: [
        AppButton {
            id: refuseButton

            anchors.right: allowButton.left
            anchors.rightMargin: 8
            isRaised: true
            text: Language.text("不允许", "Don’t allow")
            onClicked: dialog.answer(false)
        },
        AppButton {
            id: allowButton

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: Language.text("允许", "Allow")
            onClicked: dialog.answer(true)
        }
    ]

    ConsentList {
        width: parent?.width ?? 0
        title: Language.text("Tessaly 会读取", "Tessaly will read")
        icons: ["calendar", "calendar-search"]
        texts: [Language.text("所有日历的名称和颜色", "The names and colors of all calendars"), Language.text("所选日历中日程的标题、时间和备注", "Title, time and notes of the events in the calendars you choose")]
    }

    ConsentList {
        width: parent?.width ?? 0
        title: Language.text("Tessaly 会写入", "Tessaly will write")
        icons: ["calendar-plus", "calendar-sync", "calendar-x"]
        texts: [Language.text("新日程：同步时，或把日程添加到日历时", "New events, when you sync or add a schedule to a calendar"), Language.text("你对来自日历的日程所做的修改", "Your own edits to schedules that come from a calendar"), Language.text("你的删除：删除来自日历的日程时，日历中的也会删除", "Your deletions: deleting such a schedule deletes its event")]
    }

    AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("可随时在同步设置中收回。", "You can take this back in Sync settings at any time.")
        token: Theme.control
        color: Theme.textSecondary
    }
}

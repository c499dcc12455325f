import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Asks before clearing the personal content. Return cancels unless Clear has the focus.
Sheet {
    id: dialog

    title: Language.text("清空内容？", "Clear content?")
    titleToken: Theme.headline
    sheetWidth: 400
    bodyTopPadding: 6
    initialFocus: cancelButton
    onLeaving: close()

    AppText {
        width: parent.width
        text: Language.text("这会清空所有日程备注和关联任务，以及全部待办与目标；日历日程本身会保留。", "This clears all schedule notes and linked tasks, plus every to-do and goal. Calendar schedules remain.")
        token: Theme.control
        isMultiline: true
        color: Theme.textSecondary
        bottomPadding: 4
    }

    Row {
        anchors.right: parent.right
        spacing: 8

        AppButton {
            id: cancelButton

            isRaised: true
            focus: true
            text: Language.text("取消", "Cancel")
            onClicked: dialog.close()
        }

        AppButton {
            kind: AppButton.DestructiveFill
            text: Language.text("清空", "Clear")
            onClicked: {
                PlannerStore.clearPersonalContent();
                dialog.close();
            }
        }
    }
}

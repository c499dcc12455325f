import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// Asks before the program ends with changes that could not be saved. Return never quits. The dialog closes when
/// everything is saved.
Sheet {
    id: dialog

    readonly property bool isNeeded: PlannerStore.hasUnsavedChanges

    signal quitChosen

    title: Language.text("不保存就退出？", "Quit without saving?")
    titleToken: Theme.headline
    sheetWidth: 400
    bodyTopPadding: 6
    onOpened: stayButton.forceActiveFocus(Qt.PopupFocusReason)
    onLeaving: close()
    onIsNeededChanged: {
        if (!isNeeded)
            close();
    }

    AppText {
        width: parent.width
        text: Language.text("有更改无法写入磁盘，现在退出会丢失这些更改。留在 Tessaly 时会每隔几秒重试保存。", "Some changes could not be written to the disk and will be lost if you quit now. While Tessaly stays open, it tries to save them every few seconds.")
        token: Theme.control
        isMultiline: true
        color: Theme.textSecondary
        bottomPadding: 4
    }

    Row {
        anchors.right: parent.right
        spacing: 8

        AppButton {
            id: stayButton

            isRaised: true
            focus: true
            text: Language.text("留下", "Stay")
            onClicked: dialog.close()
        }

        AppButton {
            kind: AppButton.DestructiveFill
            text: Language.text("不保存并退出", "Quit without saving")
            onClicked: {
                dialog.close();
                dialog.quitChosen();
            }
        }
    }
}

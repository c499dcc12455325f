import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// Asks before an archive replaces everything. Return cancels unless Import has the focus.
Sheet {
    id: dialog

    required property ArchiveModel archive

    title: Language.text("导入“%1”？", "Import “%1”?").arg(archive.importCandidate)
    titleToken: Theme.headline
    sheetWidth: 400
    bodyTopPadding: 6
    initialFocus: cancelButton
    onLeaving: archive.dismissImport()

    AppText {
        width: parent.width
        text: Language.text("文件中的内容会替换这里的全部日程、待办、目标、链接、文档和设置。系统日历不受影响。可以撤销。", "Its content replaces all schedules, to-dos, goals, links, documents and settings here. The calendars of the system are not touched. You can undo this.")
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
            onClicked: dialog.archive.dismissImport()
        }

        AppButton {
            kind: AppButton.DestructiveFill
            text: Language.text("导入", "Import")
            onClicked: dialog.archive.confirmImport()
        }
    }
}

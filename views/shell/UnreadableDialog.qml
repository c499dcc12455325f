import QtQuick
import Tessaly.Ui

/// Reports at the start that some of the stored data could not be read.
Sheet {
    id: dialog

    title: Language.text("部分数据无法读取", "Some data could not be read")
    titleToken: Theme.headline
    sheetWidth: 400
    bodyTopPadding: 6
    initialFocus: closeButton
    onLeaving: close()

    AppText {
        width: parent.width
        text: Language.text("保存的数据有一部分已损坏，Tessaly 显示的是仍能读取的内容或上一次的备份。损坏的数据会原样另行保留，不会被覆盖。", "Part of the saved data is damaged. Tessaly shows what it could still read, or the previous backup. A copy of the damaged data is kept and will not be overwritten.")
        token: Theme.control
        isMultiline: true
        color: Theme.textSecondary
        bottomPadding: 4
    }

    AppButton {
        id: closeButton

        anchors.right: parent.right
        kind: AppButton.Primary
        focus: true
        text: Language.text("关闭", "Close")
        onClicked: dialog.close()
    }
}

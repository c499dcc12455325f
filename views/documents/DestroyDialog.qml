import QtQuick
import Tessaly.Ui

/// Asks before deleted documents are removed for good. Return cancels unless the other button has the focus.
Sheet {
    id: dialog

    /// Of the one document; empty for all.
    property string documentId
    property string documentTitle

    signal confirmed(string documentId)

    function ask(id: string, name: string) {
        documentId = id;
        documentTitle = name;
        isShown = true;
    }

    title: documentId === "" ? Language.text("彻底删除所有最近删除的文档？", "Delete all recently deleted documents forever?") : Language.text("彻底删除“%1”？", "Delete “%1” forever?").arg(documentTitle)
    titleToken: Theme.headline
    sheetWidth: 400
    bodyTopPadding: 6
    initialFocus: cancelButton
    onLeaving: close()

    AppText {
        width: parent.width
        text: Language.text("无法撤销。", "This cannot be undone.")
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
            text: Language.text("彻底删除", "Delete forever")
            onClicked: {
                dialog.confirmed(dialog.documentId);
                dialog.close();
            }
        }
    }
}

import QtQuick
import Tessaly.Shell
import Tessaly.Ui

/// Name, version and credit of the program.
Sheet {
    id: dialog

    required property ShellModel shell

    title: Qt.application.name
    titleToken: Theme.headline
    sheetWidth: 320
    bodyTopPadding: 6
    bodySpacing: 4
    initialFocus: closeButton
    onLeaving: close()

    AppText {
        width: parent.width
        text: Language.text("版本 %1", "Version %1").arg(dialog.shell.version)
        token: Theme.control
        color: Theme.textSecondary
    }

    AppText {
        width: parent.width
        // lint-allow(text): a proper name, the same in every language
        text: "The Tessaly authors"
        token: Theme.control
        color: Theme.textSecondary
        height: token.line + 16
        verticalAlignment: Text.AlignTop
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

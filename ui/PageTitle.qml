import QtQuick

/// The title of a screen.
AppText {
    readonly property bool isChinese: /[\u3000-\u9fff]/.test(text)

    token: Theme.pageTitle
    // Letter spacing is for Latin letters only.
    font.letterSpacing: isChinese ? 0 : token.spacing
    // The type of Qt.application that the linter sees has no font.
    // qmllint disable
    font.family: isChinese ? Qt.application.font.family : Theme.displayFamily
    // qmllint enable
    Accessible.role: Accessible.Heading
}

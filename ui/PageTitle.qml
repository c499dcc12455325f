import QtQuick

/// The title of a screen.
AppText {
    readonly property bool isChinese: /[\u3000-\u9fff]/.test(text)

    token: Theme.pageTitle
    // Letter spacing is for Latin letters only.
    font.letterSpacing: isChinese ? 0 : token.spacing
    Accessible.role: Accessible.Heading
}

import QtQuick

/// The title of a screen.
AppText {
    token: Theme.pageTitle
    // Letter spacing is for Latin letters only.
    font.letterSpacing: /[\u3000-\u9fff]/.test(text) ? 0 : token.spacing
    Accessible.role: Accessible.Heading
}

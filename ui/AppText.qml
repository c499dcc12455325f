import QtQuick

/// Text in one of the type styles. On one line it is as tall as the style's line and elides at the end; with
/// `isMultiline` it wraps with fixed line heights.
Text {
    id: label

    property TypeToken token: Theme.body
    property bool isMultiline: false

    // Qt puts what a fixed line height leaves over beneath the letters. Chinese letters leave less over.
    readonly property real spareAbove: isMultiline ? Math.max(0, Math.round((token.line - token.size * (/[\u2e80-\uffef]/.test(text) ? 1.45 : 1.21)) / 2)) : 0

    color: Theme.text
    font.family: token.family
    font.pixelSize: token.size
    font.weight: token.weight
    // Chinese is never letter-spaced.
    font.letterSpacing: Language.isEnglish ? token.spacing : 0
    textFormat: Text.PlainText
    elide: isMultiline && maximumLineCount > 1000 ? Text.ElideNone : Text.ElideRight
    wrapMode: isMultiline ? Text.Wrap : Text.NoWrap
    lineHeightMode: isMultiline ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: isMultiline ? token.line : 1
    topPadding: spareAbove
    bottomPadding: -spareAbove
    verticalAlignment: isMultiline ? Text.AlignTop : Text.AlignVCenter
    height: isMultiline ? implicitHeight : token.line
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text
    Accessible.ignored: label.text === ""
}

import QtQuick
import QtQuick.Layouts

/// Text in one of the type styles. On one line it is as tall as the style's line and elides at the end; with
/// `isMultiline` it wraps with fixed line heights.
Text {
    id: label

    property TypeToken token: Theme.body
    property bool isMultiline: false

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
    verticalAlignment: isMultiline ? Text.AlignTop : Text.AlignVCenter
    height: isMultiline ? implicitHeight : token.line
    Layout.preferredHeight: isMultiline ? -1 : token.line
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text
}

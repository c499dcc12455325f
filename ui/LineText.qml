import QtQuick

/// Text on one line in one of the type styles, for what a screen shows by the hundred. Assistive technology does not
/// read it: what it stands in has a name.
Text {
    property TypeToken token: Theme.body

    color: Theme.text
    font: token.font
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    height: token.line
}

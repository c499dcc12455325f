import QtQuick

/// One style of type: sizes in pixels, letter spacing for Latin text.
QtObject {
    property int size: 14
    property int line: 22
    property int weight: Font.Normal
    property real spacing: 0
    /// Where a family is missing the next best stands in for it, see applyInterfaceFont().
    readonly property string family: size >= 20 ? "Inter Display" : "Inter"
    /// Chinese is never letter-spaced.
    readonly property font font: Qt.font({
        family: family,
        pixelSize: size,
        weight: weight,
        letterSpacing: Language.isEnglish ? spacing : 0
    })
}

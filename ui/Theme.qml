pragma Singleton

import QtQuick

/// The design tokens: colours, type, sizes and durations. No other file of the program writes a literal colour.
QtObject {
    id: theme

    /// Set by the application from the appearance setting and the system's colour scheme.
    property bool isDark: false
    property bool isHighContrast: false
    property bool isReducedMotion: false

    // Colours
    readonly property color bg: isDark ? "#17181B" : "#FAFAFB"
    readonly property color sidebar: isDark ? "#1D1E22" : "#F1F2F4"
    readonly property color card: isDark ? "#1F2125" : "#FFFFFF"
    readonly property color raised: isDark ? "#26282D" : "#FFFFFF"
    readonly property color field: isDark ? "#1A1B1F" : "#FFFFFF"
    readonly property color inset: isDark ? "#24262B" : "#F4F5F7"
    readonly property color border: isHighContrast ? borderStrong : isDark ? "#303238" : "#E3E5E9"
    readonly property color borderControl: isHighContrast ? borderStrong : isDark ? "#41444C" : "#D2D5DB"
    readonly property color borderStrong: isDark ? "#7B818D" : "#868C97"
    readonly property color gridLine: isDark ? "#292B30" : "#ECEDF0"
    readonly property color text: isDark ? "#ECEDF0" : "#1B1D22"
    readonly property color textSecondary: isDark ? "#AEB3BD" : "#565C67"
    readonly property color textTertiary: isDark ? "#9AA0AB" : "#656B76"
    readonly property color textDisabled: isDark ? "#63676F" : "#A2A7B0"
    readonly property color accent: isDark ? "#3568D6" : "#2C66D8"
    readonly property color accentHover: isDark ? "#3A70E0" : "#2459C4"
    readonly property color accentPressed: isDark ? "#2C5BC2" : "#1E4DAC"
    readonly property color accentText: isDark ? "#84ADFF" : "#2459C8"
    readonly property color inkOnAccent: "#FFFFFF"
    readonly property color accentSoft: isDark ? "#22304C" : "#E6EDFB"
    readonly property color focus: isDark ? "#6E9EFF" : "#3F7BEA"
    readonly property color hover: isDark ? "#2A2C32" : "#F0F1F4"
    readonly property color pressed: isDark ? "#33363D" : "#E6E8EC"
    readonly property color selected: isDark ? "#30333A" : "#E1E4EA"
    readonly property color segment: isDark ? "#2A2C32" : "#EAECEF"
    readonly property color segmentOn: isDark ? "#4A4E57" : "#FFFFFF"
    readonly property color notice: isDark ? "#3A3320" : "#FFF4DC"
    readonly property color now: isDark ? "#F5807A" : "#CC3F3B"
    readonly property color track: isDark ? "#34373E" : "#E4E6EB"
    readonly property color toggleOff: isDark ? "#767C88" : "#868C97"
    readonly property color knob: "#FFFFFF"
    readonly property color destructive: isDark ? "#FF8A84" : "#C5302E"
    readonly property color destructiveHover: isDark ? "#FFA29D" : "#AD2725"
    readonly property color destructiveSoft: isDark ? "#3D2526" : "#FBEAE9"
    readonly property color success: isDark ? "#5CC98A" : "#23824A"
    readonly property color destructiveFill: "#C5302E"
    readonly property color editor: isDark ? "#1F2125" : "#F4F5F7"
    readonly property color scrim: isDark ? "#85000000" : "#57181A20"
    readonly property color inkOnMark: isDark ? "#1A1B1F" : "#FFFFFF"
    readonly property color transparent: "transparent"
    readonly property color focusHalo: Qt.rgba(focus.r, focus.g, focus.b, 0.24)
    readonly property color markLine: Qt.rgba(text.r, text.g, text.b, 0.14)
    readonly property color thumb: Qt.rgba(text.r, text.g, text.b, 0.26)
    readonly property color knobShadow: "#2A000000"
    readonly property color segmentShadow: "#1F141822"
    readonly property color focusDayHeader: Qt.rgba(accentText.r, accentText.g, accentText.b, 0.14)
    readonly property color focusDayCell: Qt.rgba(accentText.r, accentText.g, accentText.b, 0.12)
    readonly property color focusDayCellFill: Qt.tint(card, focusDayCell)
    readonly property color blockTextSelected: isDark ? "#FFFFFF" : text
    /// Fill of a plain button or combo box at rest, with the pointer over it, and held; `raised` inside sheets.
    readonly property color buttonRest: isDark ? hover : card
    readonly property color buttonHover: isDark ? pressed : hover
    readonly property color buttonPressed: isDark ? borderControl : pressed
    readonly property color buttonRestRaised: isDark ? pressed : card

    // Schedule colours: name, light value, dark value
    readonly property var palette: [
        ["blue", "#2C66D8", "#6FA0FF"],
        ["purple", "#7F50CC", "#B290F5"],
        ["green", "#23884D", "#5CC98A"],
        ["orange", "#C9630A", "#F3A25B"],
        ["pink", "#CB3D7E", "#F287B6"],
        ["teal", "#12828F", "#4FC3CE"],
        ["red", "#CC3F3B", "#F5807A"],
        ["indigo", "#4C56C8", "#98A2FF"]
    ]
    readonly property color blue: isDark ? "#6FA0FF" : "#2C66D8"
    readonly property color purple: isDark ? "#B290F5" : "#7F50CC"
    readonly property color green: isDark ? "#5CC98A" : "#23884D"
    readonly property color orange: isDark ? "#F3A25B" : "#C9630A"
    readonly property color pink: isDark ? "#F287B6" : "#CB3D7E"
    readonly property color teal: isDark ? "#4FC3CE" : "#12828F"
    readonly property color red: isDark ? "#F5807A" : "#CC3F3B"
    readonly property color indigo: isDark ? "#98A2FF" : "#4C56C8"

    // Type
    readonly property TypeToken pageTitle: TypeToken { size: 34; line: 42; weight: Font.Bold; spacing: -0.6 }
    readonly property TypeToken figure: TypeToken { size: 34; line: 42; weight: Font.DemiBold }
    readonly property TypeToken welcomeTitle: TypeToken { size: 22; line: 30; weight: Font.Bold }
    readonly property TypeToken sheetTitle: TypeToken { size: 20; line: 28; weight: Font.Bold }
    readonly property TypeToken documentTitle: TypeToken { size: 18; line: 26; weight: Font.DemiBold }
    readonly property TypeToken headline: TypeToken { size: 17; line: 26; weight: Font.DemiBold }
    readonly property TypeToken greeting: TypeToken { size: 17; line: 26 }
    readonly property TypeToken heading: TypeToken { size: 15; line: 22; weight: Font.DemiBold }
    readonly property TypeToken entry: TypeToken { size: 15; line: 24 }
    readonly property TypeToken body: TypeToken { size: 14; line: 22 }
    readonly property TypeToken rowTitle: TypeToken { size: 14; line: 22; weight: Font.Medium }
    readonly property TypeToken groupLabel: TypeToken { size: 14; line: 22; weight: Font.DemiBold }
    readonly property TypeToken control: TypeToken { size: 13; line: 20 }
    readonly property TypeToken button: TypeToken { size: 13; line: 20; weight: Font.Medium }
    readonly property TypeToken buttonPrimary: TypeToken { size: 13; line: 20; weight: Font.DemiBold }
    readonly property TypeToken caption: TypeToken { size: 12; line: 18 }
    readonly property TypeToken captionMedium: TypeToken { size: 12; line: 18; weight: Font.Medium }
    readonly property TypeToken captionBold: TypeToken { size: 12; line: 18; weight: Font.DemiBold }
    readonly property TypeToken blockTitle: TypeToken { size: 12; line: 15; weight: Font.DemiBold }
    readonly property TypeToken hourMark: TypeToken { size: 11; line: 14; weight: Font.DemiBold }
    readonly property TypeToken mini: TypeToken { size: 11; line: 13 }
    readonly property TypeToken count: TypeToken { size: 11; line: 16; weight: Font.Medium }
    readonly property TypeToken source: TypeToken { size: 14; line: 23 }
    /// Families of source text and code, best first.
    readonly property list<string> sourceFamilies: ["JetBrains Mono", "SF Mono", "Menlo", "DejaVu Sans Mono", "Noto Sans Mono CJK SC"]

    // Sizes
    readonly property int sidebarWidth: 232
    readonly property int pagePadding: 32
    readonly property int pageGap: 22
    readonly property int contentLimit: 1080
    readonly property int controlHeight: 32
    readonly property int smallControlHeight: 28
    readonly property int rowActionHeight: 26
    readonly property int rowHeight: 44
    readonly property int groupHeight: 40
    readonly property int nestedGroupHeight: 38
    readonly property int statusHeight: 33
    readonly property int dateTimeWidth: 186
    readonly property int dateWidth: 148

    // Radii
    readonly property int blockRadius: 5
    readonly property int actionRadius: 6
    readonly property int smallRadius: 7
    readonly property int controlRadius: 8
    readonly property int popupRadius: 10
    readonly property int cardRadius: 12
    readonly property int sheetRadius: 14

    readonly property real draggedOpacity: 0.92
    /// Looks the same as 1.
    readonly property real nearlyOpaque: 0.998
    /// Something dragged this close to an edge scrolls the page.
    readonly property int driftZone: 48
    /// Pixels a second for each pixel into that zone.
    readonly property real driftPerPixel: 12

    // How far popups and sheets rise while they fade in
    readonly property int popupRise: isReducedMotion ? 0 : 4
    readonly property int sheetRise: isReducedMotion ? 0 : 8

    // Durations, milliseconds
    readonly property int fast: isReducedMotion ? 0 : 90
    readonly property int switching: isReducedMotion ? 0 : 140
    readonly property int disclose: isReducedMotion ? 0 : 180
    readonly property int glide: isReducedMotion ? 0 : 240
    readonly property int popupIn: isReducedMotion ? 80 : 120
    readonly property int popupOut: isReducedMotion ? 80 : 90
    readonly property int sheetIn: isReducedMotion ? 80 : 200
    readonly property int sheetOut: isReducedMotion ? 80 : 150
    readonly property int toastIn: isReducedMotion ? 80 : 180
    readonly property int toastOut: isReducedMotion ? 80 : 240
    readonly property int toastStay: 4000
    readonly property int toastActionStay: 8000
    readonly property int flash: 600
    /// How long a button shows that it has done its work.
    readonly property int done: 1600
    readonly property int progress: isReducedMotion ? 0 : 240
    readonly property int toolTipDelay: 500
    /// After this pause, typing in a list starts a new search.
    readonly property int typingPause: 1000
    /// One turn of the loading indicator.
    readonly property int turn: 900

    /// The current mode's value of a palette entry; blue for an unknown name.
    function paletteColor(name: string): color {
        const entry = palette.find(candidate => candidate[0] === name) ?? palette[0];
        return isDark ? entry[2] : entry[1];
    }

    /// The colour for a palette name or "#RRGGBB". Hex text equal to a palette entry's value of either mode gives the
    /// current mode's value of that entry.
    function scheduleColor(key: string): color {
        if (!key.startsWith("#"))
            return paletteColor(key);
        const hex = key.toUpperCase();
        const entry = palette.find(candidate => candidate[1] === hex || candidate[2] === hex);
        return entry ? paletteColor(entry[0]) : hex;
    }

    /// The colour laid over the opaque card colour at the given opacity.
    function tint(over: color, opacity: real): color {
        return Qt.tint(card, Qt.rgba(over.r, over.g, over.b, opacity));
    }
}

pragma Singleton

import QtQuick

/// The design tokens: colours, type, sizes and durations.
QtObject {
    /// Set by the application from the appearance setting and the system's colour scheme.
    property bool isDark: false

    readonly property color bg: isDark ? "#17181B" : "#FAFAFB"
}

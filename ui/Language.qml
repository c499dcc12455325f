pragma Singleton

import QtQuick

/// Picks the member of a Chinese/English text pair. A binding that calls text() is evaluated again when the language
/// changes.
QtObject {
    /// Set by the application from the planner's interface language.
    property bool isEnglish: false

    function text(chinese: string, english: string): string {
        return isEnglish ? english : chinese;
    }
}

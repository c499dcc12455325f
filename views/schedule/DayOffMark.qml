import QtQuick
import Tessaly.Ui

/// Whether a day of the calendar of China is a day off or a make-up work day. Said by the name of the day.
LineText {
    /// As DayOff in model/ChineseCalendar.h.
    required property int dayOff

    readonly property bool isHoliday: dayOff === 1

    visible: dayOff !== 0
    text: isHoliday ? Language.text("休", "off") : Language.text("班", "work")
    color: isHoliday ? Theme.accentText : Theme.now
    token: Theme.hourMark
    elide: Text.ElideNone
}

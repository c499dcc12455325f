#pragma once

#include <QStringView>

#include <span>

namespace tessaly {

/// What a word can mean in a phrase such as "lunch tomorrow at 12:30".
enum class QuickAddMeaning {
    Other,
    Number,     ///< value: the number
    Half,       ///< 半, half
    Day,        ///< value: days from today; period: the part of that day, if any
    Weekday,    ///< value: 1 (Monday) to 7; isUnsure: also an ordinary word
    Weekend,    ///< the Saturday
    Which,      ///< value: -1 last, 0 this, 1 next, 2 the one after
    Month,      ///< value: 1 to 12; isUnsure: also an ordinary word
    WhichMonth, ///< value: months from this one
    WhichYear,  ///< value: years from this one
    MonthEnd,   ///< value: months from this one
    YearEnd,    ///< value: years from this one
    MonthMark,  ///< 月 after its number
    YearMark,   ///< 年 after its number
    DayMark,    ///< 日, 号 after the number of a day
    Ordinal,    ///< st, nd, rd, th after the number of a day
    DayUnit,    ///< value: days in one
    MonthUnit,  ///< value: months in one
    TimeUnit,   ///< value: minutes in one
    Period,     ///< period: the part of a day
    ClockTime,  ///< value: minutes since midnight
    HourMark,   ///< 点, o'clock after an hour
    Exactly,    ///< 整 after an hour
    Quarter,    ///< 刻, quarter
    Past,       ///< half past
    BeforeHour, ///< quarter to
    Meridiem,   ///< value: 0 am, 12 pm
    At,         ///< before a time
    On,         ///< before a day
    Article,    ///< the
    Of,         ///< 5th of May
    In,         ///< before the time that passes until then
    Lasting,    ///< before a length
    From,       ///< before the start of a range
    Until,      ///< between start and end
    Plus,       ///< between hours and minutes of a length
    Dash,       ///< - – ~
    Colon,
    Slash,
    Dot,
    Comma,
    Bracket,
    Deadline, ///< before a time: by
    Before,   ///< after a time: 之前; after a length of time: ago
    DueMark,  ///< after a time: 截止
    Later,    ///< after a length of time
    Every,    ///< what follows repeats, which is not understood
    Counter,  ///< 个 between number and unit
    Filler,   ///< 的 after a time
};

/// The parts of a day.
enum class DayPeriod { None, Night, Morning, Forenoon, Noon, Afternoon, Evening, LateEvening };

struct QuickAddWord
{
    /// In lower case.
    QStringView text;
    QuickAddMeaning meaning = QuickAddMeaning::Other;
    int value = 0;
    DayPeriod period = DayPeriod::None;
    /// Means a time only beside another one, or where its spelling says so.
    bool isUnsure = false;
};

/// The words of one language that quick add understands.
[[nodiscard]] std::span<const QuickAddWord> chineseQuickAddWords();
[[nodiscard]] std::span<const QuickAddWord> englishQuickAddWords();

/// What follows the number of a day in other words than dates: 5号线 is an underground line.
[[nodiscard]] QStringView chineseNamesAfterNumbers();

} // namespace tessaly

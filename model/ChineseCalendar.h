#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace tessaly {

/// The calendar of China (GB/T 33661) from a table: lunar days and solar terms of 1900 to 2100, and the holidays and
/// make-up work days that the State Council has announced since 2001.

struct LunarDay
{
    /// 1 … 12
    int month = 0;
    /// 1 … 30
    int day = 0;
    /// Of a leap month, which follows the month of the same number.
    bool isLeap = false;
    /// The last day of the lunar year.
    bool isYearEnd = false;

    bool operator==(const LunarDay &) const = default;
};

/// Nothing outside 1900 to 2100.
[[nodiscard]] std::optional<LunarDay> lunarDay(QDate day);
/// 0 Lesser Cold … 23 Winter Solstice, on the day in which it falls in China; nothing on other days.
[[nodiscard]] std::optional<int> solarTerm(QDate day);

/// What was announced for a day.
enum class DayOff { None, Holiday, WorkDay };

/// A day in words.
struct ChineseDay
{
    /// What stands beside the date: holiday, festival, solar term, month or day, the first that there is. In English
    /// the lunar day is written "15th", the first of a month "month 8" or "leap 6".
    QString text = {};
    /// The same where there is little room: at most eight letters in English, and "中秋" for "中秋节".
    QString narrowText = {};
    DayOff dayOff = DayOff::None;
    /// All of it, for a screen reader.
    QString spoken = {};
    /// Whether the text is more than the day of a lunar month.
    bool isSpecial = false;

    bool operator==(const ChineseDay &) const = default;
};

[[nodiscard]] ChineseDay chineseDay(QDate day, bool isEnglish);

} // namespace tessaly

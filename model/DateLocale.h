#pragma once

#include <QByteArray>
#include <QLocale>

namespace tessaly {

/// The values of the environment that can name the locale of dates.
struct LocaleSettings
{
    QByteArray all = {};  ///< LC_ALL
    QByteArray time = {}; ///< LC_TIME
    QByteArray lang = {}; ///< LANG
};

/// The locale of dates and times (POSIX.1, 8.2): the first value that is not empty. The C locale when there is none, or
/// when nothing is known of the one named.
[[nodiscard]] QLocale dateLocale(const LocaleSettings &settings);

/// The day on which weeks begin in the locale's region, as CLDR has it; Monday for the C locale.
[[nodiscard]] Qt::DayOfWeek firstWeekday(const QLocale &locale);

/// The locale's name for ICU: "zh_CN".
[[nodiscard]] QByteArray icuName(const QLocale &locale);

} // namespace tessaly

#pragma once

#include "model/QuickAddCursor.h"

#include <QDate>

namespace tessaly {

/// A day as it was said.
struct QuickAddDay
{
    QDate day = {};
    /// Which later day is meant where this one is over; Said where it is the day that was named.
    enum class Repeats { Said, Weekly, Monthly, Yearly } repeats = Repeats::Said;
    /// The weekday without anything beside it.
    bool isWeekday = false;
    /// The part of the day in words such as "tonight".
    DayPeriod period = DayPeriod::None;
    /// Understood only beside a time, or where it stands by itself.
    bool isUnsure = false;
};

/// What dates are reckoned from.
struct QuickAddToday
{
    QDate day = {};
    Qt::DayOfWeek firstWeekday = Qt::Monday;
    /// 3/4 is the 3rd of April.
    bool isDayFirst = false;
};

/// "tomorrow", "next Friday", "下周五", "Dec 5", "12月5日", "2026-12-05", "the 5th", "in two weeks", "三天后".
[[nodiscard]] std::optional<QuickAddDay> readDay(QuickAddCursor &cursor, QStringView phrase,
                                                 const QuickAddToday &today);

/// The same or the next day that is meant, not before the other one.
[[nodiscard]] QDate notBefore(const QuickAddDay &said, QDate earliest);

} // namespace tessaly

#include "model/QuickAddDates.h"

#include <utility>

namespace tessaly {

namespace {

using enum QuickAddMeaning;
using Repeats = QuickAddDay::Repeats;
using SaidDay = std::optional<QuickAddDay>;

constexpr int latestYear = 9999;

SaidDay fixedDay(QDate day)
{
    if (!day.isValid() || day.year() > latestYear)
        return std::nullopt;
    return QuickAddDay{.day = day};
}

/// The day in the year of today, or in a leap year for Feb 29; later ones follow by notBefore().
SaidDay yearlyDay(int month, int day, QDate today)
{
    QDate date(today.year(), month, day);
    for (int year = today.year() + 1; !date.isValid() && year <= today.year() + 8; ++year)
        date = QDate(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return QuickAddDay{.day = date, .repeats = Repeats::Yearly};
}

/// The day of this month, or of the next month that has it.
SaidDay monthlyDay(int day, QDate today)
{
    QDate date(today.year(), today.month(), day);
    for (int months = 1; !date.isValid() && months <= 2; ++months) {
        const QDate month = today.addMonths(months);
        date = QDate(month.year(), month.month(), day);
    }
    return QuickAddDay{.day = date, .repeats = Repeats::Monthly};
}

/// 2026-12-05, 2026/12/5, 2026.12.5.
SaidDay readYearFirst(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    const bool isYear = ahead.token().digits == 4;
    const auto year = ahead.takeNumber(1000, latestYear);
    const QuickAddMeaning sign = ahead.token().meaning;
    if (!isYear || !year || (sign != Dash && sign != Slash && sign != Dot))
        return std::nullopt;
    ahead.skip();
    const auto month = ahead.takeNumber(1, 12);
    if (!month || !ahead.take(sign))
        return std::nullopt;
    const auto day = ahead.takeNumber(1, 31);
    const SaidDay date = day ? fixedDay(QDate(*year, *month, *day)) : std::nullopt;
    if (date)
        cursor = ahead;
    return date;
}

/// 12/25 and 12/25/2026.
SaidDay readSlashed(QuickAddCursor &cursor, const QuickAddToday &today)
{
    QuickAddCursor ahead = cursor;
    if (ahead.is(Slash, -1) || ahead.token().digits == 0)
        return std::nullopt;
    const auto first = ahead.takeNumber(1, 31);
    if (!first || !ahead.take(Slash) || ahead.token(-1).hasSpaceBefore || ahead.token(-1).hasSpaceAfter)
        return std::nullopt;
    const auto second = ahead.takeNumber(1, 31);
    if (!second || ahead.token(-1).digits == 0)
        return std::nullopt;
    const bool isDayFirst = *first > 12 || (today.isDayFirst && *second <= 12);
    const int month = isDayFirst ? *second : *first;
    const int day = isDayFirst ? *first : *second;
    SaidDay date;
    if (ahead.is(Slash)) {
        ahead.skip();
        const auto year = ahead.takeNumber(1000, latestYear);
        date = year ? fixedDay(QDate(*year, month, day)) : std::nullopt;
    } else {
        date = yearlyDay(month, day, today.day);
    }
    if (date)
        cursor = ahead;
    return date;
}

/// [2026年 | 明年] 12月5日, [下个月] 5号.
SaidDay readChineseDate(QuickAddCursor &cursor, QDate today)
{
    QuickAddCursor ahead = cursor;
    std::optional<int> year;
    if (const auto years = ahead.takeValue(WhichYear)) {
        year = today.year() + *years;
    } else if (ahead.is(Number) && ahead.is(YearMark, 1)) {
        year = ahead.takeNumber(1000, latestYear);
        ahead.skip();
    }
    SaidDay date;
    if (const auto months = ahead.takeValue(WhichMonth); months && !year) {
        const QDate month = today.addMonths(*months);
        if (const auto day = ahead.takeNumber(1, 31); day && ahead.take(DayMark))
            date = fixedDay(QDate(month.year(), month.month(), *day));
    } else if (!year && (ahead.is(WhichYear, -1) || ahead.is(YearMark, -1))) {
        return std::nullopt; // The year has no such day.
    } else if (const auto number = ahead.takeNumber(1, 12); number && ahead.take(MonthMark)) {
        const auto day = ahead.takeNumber(1, 31);
        if (day && ahead.take(DayMark))
            date = year ? fixedDay(QDate(*year, *number, *day)) : yearlyDay(*number, *day, today);
    }
    if (date)
        cursor = ahead;
    return date;
}

/// 5号, if it is no name such as 5号线.
SaidDay readDayOfMonth(QuickAddCursor &cursor, QStringView phrase, QDate today)
{
    QuickAddCursor ahead = cursor;
    const bool isAfterNumber = ahead.is(MonthMark, -1) || ahead.is(YearMark, -1);
    const auto day = ahead.takeNumber(1, 31);
    if (!day || isAfterNumber || !ahead.is(DayMark))
        return std::nullopt;
    const qsizetype end = ahead.token().end;
    ahead.skip();
    if (end < phrase.size() && chineseNamesAfterNumbers().contains(phrase[end]))
        return std::nullopt;
    cursor = ahead;
    return monthlyDay(*day, today);
}

/// Dec 5[th][, 2027], 5[th] [of] Dec[, 2027].
SaidDay readEnglishDate(QuickAddCursor &cursor, QDate today)
{
    QuickAddCursor ahead = cursor;
    ahead.take(Article);
    std::optional<int> day;
    std::optional<int> month = ahead.takeValue(Month);
    if (month) {
        ahead.take(Dot);
        day = ahead.takeNumber(1, 31);
        const bool isOther = ahead.is(Colon) || ahead.is(Meridiem) || ahead.is(TimeUnit);
        if (isOther)
            return std::nullopt;
        ahead.take(Ordinal);
    } else if (ahead.token().digits > 0) {
        day = ahead.takeNumber(1, 31);
        ahead.take(Ordinal);
        ahead.take(Of);
        month = ahead.takeValue(Month);
    }
    if (!day || !month)
        return std::nullopt;
    QuickAddCursor afterYear = ahead;
    afterYear.take(Comma);
    const bool isYear = afterYear.token().digits == 4;
    const auto year = isYear ? afterYear.takeNumber(1900, 2999) : std::nullopt;
    const bool isClock = afterYear.is(Colon);
    const SaidDay date = year && !isClock ? fixedDay(QDate(*year, *month, *day)) : yearlyDay(*month, *day, today);
    if (date)
        cursor = year && !isClock ? afterYear : ahead;
    return date;
}

/// The 5th [of next month]; sure only after a word such as "on".
SaidDay readOrdinal(QuickAddCursor &cursor, QDate today)
{
    QuickAddCursor ahead = cursor;
    ahead.take(Article);
    const auto day = ahead.takeNumber(1, 31);
    if (!day || !ahead.take(Ordinal))
        return std::nullopt;
    SaidDay date = monthlyDay(*day, today);
    date->isUnsure = true;
    if (ahead.is(Of) && ahead.is(WhichMonth, 1)) {
        const QDate month = today.addMonths(static_cast<int>(ahead.token(1).value));
        ahead.skip(2);
        date = fixedDay(QDate(month.year(), month.month(), *day));
    }
    if (date)
        cursor = ahead;
    return date;
}

/// The weekday of the week so many weeks from this one. Weeks begin on Monday in Chinese, in English on the user's
/// first weekday.
QDate weekdayOf(int weekday, int weeks, bool isHan, const QuickAddToday &today)
{
    const int first = isHan ? int(Qt::Monday) : int(today.firstWeekday);
    const QDate weekStart = today.day.addDays(-((today.day.dayOfWeek() - first + 7) % 7));
    return weekStart.addDays((weekday - first + 7) % 7 + weeks * 7);
}

QuickAddDay comingWeekday(int weekday, QDate today)
{
    return {.day = today.addDays((weekday - today.dayOfWeek() + 7) % 7), .repeats = Repeats::Weekly};
}

/// Friday, next Friday, 下周五, Friday next week, this weekend.
SaidDay readWeekday(QuickAddCursor &cursor, const QuickAddToday &today)
{
    QuickAddCursor ahead = cursor;
    const auto which = ahead.takeValue(Which);
    const bool isWeekWord = which && ahead.is(DayUnit) && ahead.token().value == 7 && !ahead.token().isHan;
    if (isWeekWord && (ahead.is(Weekday, 1) || (ahead.is(On, 1) && ahead.is(Weekday, 2))))
        ahead.skip(ahead.is(On, 1) ? 2 : 1);
    const QuickAddToken word = ahead.token();
    const bool isWeekend = word.meaning == Weekend;
    if (word.meaning != Weekday && !isWeekend)
        return std::nullopt;
    ahead.skip();
    const int weekday = isWeekend ? int(Qt::Saturday) : static_cast<int>(word.value);
    QuickAddDay day = comingWeekday(weekday, today.day);
    day.isWeekday = true;
    day.isUnsure = (word.isUnsure || isWeekend) && !which;
    const bool hasWeekBehind =
        !which && ahead.is(Which) && !word.isHan && ahead.is(DayUnit, 1) && ahead.token(1).value == 7;
    if (hasWeekBehind) {
        day = {.day = weekdayOf(weekday, static_cast<int>(ahead.token().value), false, today)};
        ahead.skip(2);
    } else if (which && *which == 0 && !word.isHan) {
        day.isWeekday = false;
    } else if (which) {
        day = {.day = weekdayOf(weekday, *which, word.isHan, today)};
    }
    cursor = ahead;
    return day;
}

/// The Monday of "next week".
SaidDay readComingWeek(QuickAddCursor &cursor, const QuickAddToday &today)
{
    QuickAddCursor ahead = cursor;
    const auto which = ahead.takeValue(Which);
    const QuickAddToken unit = ahead.token();
    if (!which || *which < 1 || unit.meaning != DayUnit || unit.value != 7)
        return std::nullopt;
    ahead.skip();
    cursor = ahead;
    return QuickAddDay{.day = weekdayOf(Qt::Monday, *which, true, today), .isUnsure = unit.isHan};
}

/// In 3 days, two weeks from now, 三天后, 两周前.
SaidDay readDistance(QuickAddCursor &cursor, QDate today)
{
    QuickAddCursor ahead = cursor;
    const bool isIn = ahead.take(In);
    const bool isHalf = ahead.take(Half);
    const auto number = isHalf ? std::optional(1) : ahead.takeNumber(1, latestYear);
    if (!number)
        return std::nullopt;
    ahead.take(Counter);
    const QuickAddToken unit = ahead.token();
    if (unit.meaning != DayUnit && unit.meaning != MonthUnit)
        return std::nullopt;
    ahead.skip();
    const bool isAgo = ahead.is(Before) && !isIn;
    if (!isIn && !isAgo && !ahead.is(Later))
        return std::nullopt;
    if (isAgo || ahead.is(Later))
        ahead.skip();
    const int count = (isAgo ? -*number : *number) * static_cast<int>(unit.value);
    constexpr int halfMonth = 15;
    QDate day = unit.meaning == DayUnit ? today.addDays(count) : today.addMonths(count);
    if (isHalf)
        day = unit.meaning == MonthUnit ? today.addDays(isAgo ? -halfMonth : halfMonth) : QDate();
    const SaidDay date = fixedDay(day);
    if (date)
        cursor = ahead;
    return date;
}

/// Today, tonight, 月底, end of the year.
SaidDay readNamedDay(QuickAddCursor &cursor, QDate today)
{
    const QuickAddToken word = cursor.token();
    const int value = static_cast<int>(word.value);
    SaidDay day;
    if (word.meaning == Day) {
        day = QuickAddDay{.day = today.addDays(value), .period = word.period};
    } else if (word.meaning == MonthEnd) {
        const QDate month = today.addMonths(value);
        day = fixedDay(QDate(month.year(), month.month(), month.daysInMonth()));
    } else if (word.meaning == YearEnd) {
        day = fixedDay(QDate(today.year() + value, 12, 31));
    }
    if (day)
        cursor.skip();
    return day;
}

} // namespace

SaidDay readDay(QuickAddCursor &cursor, QStringView phrase, const QuickAddToday &today)
{
    SaidDay day = readYearFirst(cursor);
    if (!day)
        day = readSlashed(cursor, today);
    if (!day)
        day = readChineseDate(cursor, today.day);
    if (!day)
        day = readDayOfMonth(cursor, phrase, today.day);
    if (!day)
        day = readEnglishDate(cursor, today.day);
    if (!day)
        day = readOrdinal(cursor, today.day);
    if (!day)
        day = readWeekday(cursor, today);
    if (!day)
        day = readComingWeek(cursor, today);
    if (!day)
        day = readDistance(cursor, today.day);
    return day ? day : readNamedDay(cursor, today.day);
}

QDate notBefore(const QuickAddDay &said, QDate earliest)
{
    QDate day = said.day;
    if (said.repeats == Repeats::Said || day >= earliest)
        return day;
    if (said.repeats == Repeats::Weekly)
        return day.addDays((day.daysTo(earliest) + 6) / 7 * 7);
    const int step = said.repeats == Repeats::Monthly ? 1 : 12;
    for (int months = step; day < earliest || day.day() != said.day.day(); months += step)
        day = said.day.addMonths(months);
    return day;
}

} // namespace tessaly

#include "model/QuickAddTimes.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

using enum QuickAddMeaning;

constexpr int hourMinutes = 60;
constexpr int halfDay = 12 * hourMinutes;
constexpr int day = 24 * hourMinutes;
constexpr int longestLength = 7 * day;

/// What is said of the minutes after "3点"; nothing where it is no time.
std::optional<int> readMinutesAfterHour(QuickAddCursor &cursor)
{
    if (cursor.take(Half))
        return 30;
    QuickAddCursor ahead = cursor;
    const QuickAddToken number = ahead.token();
    const std::optional<int> value = ahead.takeNumber(0, 59);
    if (value && ahead.is(Quarter) && (*value == 1 || *value == 3)) {
        ahead.skip();
        cursor = ahead;
        return *value * 15;
    }
    const bool isMinuteWord = ahead.is(TimeUnit) && ahead.token().end - ahead.token().start == 1;
    const bool isPlain = value.value_or(0) >= 10 && !ahead.is(TimeUnit) && !ahead.is(Counter) && !ahead.is(HourMark);
    if (!value || number.hasSpaceBefore || !(isMinuteWord || isPlain))
        return std::nullopt;
    if (isMinuteWord)
        ahead.skip();
    cursor = ahead;
    return value;
}

/// "half past 3", "quarter to 4", "ten past 9".
std::optional<QuickAddClock> readSpokenClock(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    int minutes = 0;
    if (ahead.take(Half))
        minutes = 30;
    else if (ahead.take(Quarter))
        minutes = 15;
    else if (const std::optional<int> number = ahead.takeNumber(1, 29); number && ahead.is(Past))
        minutes = *number;
    else
        return std::nullopt;
    const bool isBefore = minutes == 15 && ahead.is(Until) && !ahead.token().isHan;
    if (!isBefore && !ahead.is(Past))
        return std::nullopt;
    ahead.skip();
    const std::optional<int> hour = ahead.takeNumber(1, 12);
    if (!hour)
        return std::nullopt;
    cursor = ahead;
    if (isBefore)
        return QuickAddClock{.hour = *hour == 1 ? 12 : *hour - 1, .minute = hourMinutes - minutes};
    return QuickAddClock{.hour = *hour, .minute = minutes};
}

/// An hour with a sign that makes it one: 15:00, 3pm, 3点.
std::optional<QuickAddClock> readNumberClock(QuickAddCursor &cursor, bool &isUnsure)
{
    QuickAddCursor ahead = cursor;
    const QuickAddToken number = ahead.token();
    const std::optional<int> hour = ahead.takeNumber(0, 24);
    if (!hour || number.digits > 2)
        return std::nullopt;
    QuickAddClock clock{.hour = *hour, .isExact = *hour > 12 || *hour == 0};
    if (ahead.is(Colon) && ahead.token(1).digits == 2) {
        ahead.skip();
        const std::optional<int> minute = ahead.takeNumber(0, 59);
        if (!minute || number.digits == 0 || ahead.is(Colon))
            return std::nullopt;
        clock.minute = *minute;
        clock.isExact = clock.isExact || (number.digits == 2 && *hour < 10);
    } else if (ahead.take(HourMark)) {
        const bool isWord = number.isHan && number.digits == 0;
        const std::optional<int> minute = ahead.take(Exactly) ? 0 : readMinutesAfterHour(ahead);
        const bool isClockWord = ahead.token(-1).end - ahead.token(-1).start == 2 || ahead.is(Exactly, -1);
        isUnsure = isWord && !minute && !isClockWord;
        clock.minute = minute.value_or(0);
    } else {
        const bool isPeriodNext = ahead.is(Period) && !ahead.token().isHan && !ahead.token().isUnsure;
        if (*hour < 1 || *hour > 12 || (!ahead.is(Meridiem) && !isPeriodNext))
            return std::nullopt;
    }
    if (ahead.is(Meridiem) && *hour >= 1 && *hour <= 12)
        clock.meridiem = ahead.takeValue(Meridiem);
    if (*hour == 24 && clock.minute != 0)
        return std::nullopt;
    cursor = ahead;
    return clock;
}

/// The 3 of "at 3" and of "3-5pm".
std::optional<QuickAddClock> readBareHour(QuickAddCursor &cursor)
{
    static constexpr std::array others{TimeUnit, DayUnit, MonthUnit, Ordinal,   Slash,    Dot, Counter,
                                       Colon,    DayMark, YearMark,  MonthMark, HourMark, Of,  Number};
    const QuickAddToken number = cursor.token();
    const bool isOther = std::ranges::any_of(others, [&](QuickAddMeaning other) { return cursor.is(other, 1); }) ||
                         (number.digits > 0 && cursor.is(Month, 1));
    if (isOther || number.digits > 2)
        return std::nullopt;
    const std::optional<int> hour = cursor.takeNumber(number.digits == 0 ? 2 : 0, 24);
    if (!hour)
        return std::nullopt;
    return QuickAddClock{.hour = *hour, .isExact = *hour > 12 || *hour == 0};
}

std::optional<QuickAddClock> readClock(QuickAddCursor &cursor, bool &isUnsure)
{
    QuickAddCursor ahead = cursor;
    DayPeriod period = DayPeriod::None;
    bool isAt = false;
    if (ahead.is(Period)) {
        period = ahead.token().period;
        ahead.skip();
        isAt = ahead.take(At);
    }
    std::optional<QuickAddClock> clock;
    if (const std::optional<int> minutes = ahead.takeValue(ClockTime))
        clock = {.hour = *minutes / hourMinutes, .isExact = true};
    if (!clock)
        clock = readSpokenClock(ahead);
    if (!clock)
        clock = readNumberClock(ahead, isUnsure);
    if (!clock && isAt)
        clock = readBareHour(ahead);
    if (!clock)
        return std::nullopt;
    if (ahead.is(Period) && !ahead.token().isHan && period == DayPeriod::None) {
        period = ahead.token().period;
        ahead.skip();
    }
    clock->period = period;
    isUnsure = isUnsure && period == DayPeriod::None;
    cursor = ahead;
    return clock;
}

bool takesRangeSign(QuickAddCursor &cursor, bool isFrom)
{
    return cursor.take(Dash) || cursor.take(Until) || (isFrom && cursor.take(Plus));
}

/// The end of a range, where there is one.
std::optional<QuickAddClock> readRangeEnd(QuickAddCursor &cursor, bool isFrom)
{
    QuickAddCursor ahead = cursor;
    const bool isTight = ahead.is(Dash) && !ahead.token().hasSpaceBefore && !ahead.token().hasSpaceAfter;
    if (!takesRangeSign(ahead, isFrom))
        return std::nullopt;
    bool isUnsure = false;
    std::optional<QuickAddClock> end = readClock(ahead, isUnsure);
    if (!end && (isFrom || isTight))
        end = readBareHour(ahead);
    if (end)
        cursor = ahead;
    return end;
}

/// What follows the hours of a length: "30", "30 minutes", "and a half".
int readMinutesOfLength(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    const bool isJoined = !ahead.token().hasSpaceBefore;
    ahead.take(Plus);
    if (ahead.is(Number) && ahead.is(Half, 1) && ahead.token().value == 1 && !ahead.token().isHan) {
        ahead.skip(2);
        cursor = ahead;
        return 30;
    }
    if (isJoined && cursor.take(Half))
        return 30;
    const QuickAddToken number = ahead.token();
    const std::optional<int> minutes = ahead.takeNumber(1, 59);
    if (!minutes)
        return 0;
    if (ahead.is(TimeUnit) && ahead.token().value < hourMinutes) {
        const int unit = static_cast<int>(ahead.token().value);
        ahead.skip();
        cursor = ahead;
        return *minutes * unit;
    }
    const bool isMinutes = isJoined && number.digits == 2;
    cursor = isMinutes ? ahead : cursor;
    return isMinutes ? *minutes : 0;
}

} // namespace

int QuickAddClock::minutes() const
{
    const int said = hour * hourMinutes + minute;
    if (meridiem)
        return (hour % 12 + *meridiem) * hourMinutes + minute;
    if (hour > 12 || (isExact && period == DayPeriod::None))
        return said;
    switch (period) {
    case DayPeriod::None:
        return hour >= 1 && hour <= 6 ? said + halfDay : said;
    case DayPeriod::Night:
        return hour == 12 ? minute : said;
    case DayPeriod::Morning:
    case DayPeriod::Forenoon:
        return said;
    case DayPeriod::Noon:
        return hour >= 1 && hour <= 3 ? said + halfDay : said;
    case DayPeriod::Afternoon:
        return hour == 12 ? said : said + halfDay;
    case DayPeriod::Evening:
    case DayPeriod::LateEvening:
        return hour < 4 ? said + day : said + halfDay;
    }
    return said;
}

std::optional<QuickAddTime> readTime(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    const bool isFrom = ahead.take(From);
    const bool isAt = !isFrom && ahead.take(At);
    QuickAddTime time;
    if (const std::optional<QuickAddClock> start = readClock(ahead, time.isUnsure)) {
        time.start = *start;
        time.end = readRangeEnd(ahead, isFrom);
        time.isUnsure = time.isUnsure && !time.end;
        cursor = ahead;
        return time;
    }
    const std::optional<QuickAddClock> start = readBareHour(ahead);
    if (!start)
        return std::nullopt;
    time.start = *start;
    QuickAddCursor afterRange = ahead;
    bool isEndUnsure = false;
    const bool isRange = takesRangeSign(afterRange, isFrom);
    if (isRange)
        time.end = readClock(afterRange, isEndUnsure);
    if (isRange && !time.end && (isFrom || isAt))
        time.end = readBareHour(afterRange);
    if (!time.end && !isAt)
        return std::nullopt;
    time.isUnsure = !time.end;
    cursor = time.end ? afterRange : ahead;
    return time;
}

std::optional<int> readLength(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    ahead.take(Lasting);
    double units = 0;
    bool isHalf = false;
    if (ahead.take(Half)) {
        ahead.takeNumber(1, 1);
        isHalf = true;
    } else if (ahead.is(Number)) {
        units = ahead.token().value;
        ahead.skip();
        // "one and a half hours"
        if (ahead.is(Plus) && ahead.is(Number, 1) && ahead.is(Half, 2)) {
            ahead.skip(3);
            isHalf = true;
        }
    } else {
        return std::nullopt;
    }
    ahead.take(Counter);
    isHalf = ahead.take(Half) || isHalf;
    const QuickAddToken unit = ahead.token();
    // 90分 may be points.
    const bool isAmbiguous = unit.isHan && unit.end - unit.start == 1;
    if (unit.meaning != TimeUnit || isAmbiguous)
        return std::nullopt;
    ahead.skip();
    double minutes = (units + (isHalf ? 0.5 : 0)) * unit.value;
    if (unit.value == hourMinutes && !isHalf)
        minutes += readMinutesOfLength(ahead);
    if (minutes < 1 || minutes > longestLength)
        return std::nullopt;
    cursor = ahead;
    return static_cast<int>(minutes);
}

std::optional<int> readMomentFromNow(QuickAddCursor &cursor)
{
    QuickAddCursor ahead = cursor;
    const bool isIn = ahead.take(In);
    const bool isLength = ahead.is(Lasting);
    const std::optional<int> minutes = readLength(ahead);
    if (!minutes || isLength || (!isIn && !ahead.is(Later)))
        return std::nullopt;
    ahead.take(Later);
    cursor = ahead;
    return minutes;
}

QuickAddMinutes minutesOf(QuickAddTime time, DayPeriod period)
{
    const bool isMidnight = time.start.hour == 0 && time.start.period == DayPeriod::None;
    if (!time.start.isMarked() || isMidnight)
        time.start.period = period;
    if (!time.end)
        return {.start = time.start.minutes()};
    const bool isEndMarked = time.end->isMarked();
    if (!isEndMarked)
        time.end->period = time.start.period;
    int end = time.end->minutes();
    int start = time.start.minutes();
    if (!time.start.isMarked() && time.end->meridiem) {
        time.start.meridiem = time.end->meridiem;
        if (time.start.minutes() >= end)
            time.start.meridiem = 12 - *time.end->meridiem;
        start = time.start.minutes();
    } else if (!isEndMarked && time.start.meridiem) {
        time.end->meridiem = time.start.meridiem;
        end = time.end->minutes();
    }
    while (end <= start)
        end += isEndMarked ? day : halfDay;
    return {.start = start, .end = end};
}

int defaultMinutes(DayPeriod period)
{
    switch (period) {
    case DayPeriod::Night:
        return 5 * hourMinutes;
    case DayPeriod::Morning:
        return 8 * hourMinutes;
    case DayPeriod::Noon:
        return 12 * hourMinutes;
    case DayPeriod::Afternoon:
        return 14 * hourMinutes;
    case DayPeriod::Evening:
        return 19 * hourMinutes;
    case DayPeriod::LateEvening:
        return 20 * hourMinutes;
    case DayPeriod::None:
    case DayPeriod::Forenoon:
        break;
    }
    return 9 * hourMinutes;
}

} // namespace tessaly

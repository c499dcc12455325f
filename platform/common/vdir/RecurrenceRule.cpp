#include "platform/common/vdir/RecurrenceRule.h"

#include <libical/ical.h>

#include <QDateTime>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <utility>

namespace tessaly {

namespace {

constexpr qsizetype longestRule = 4000;
constexpr qint64 daySeconds = 86400;

icaltimetype icalTime(qint64 wall, bool isDate)
{
    const QDateTime time = QDateTime::fromSecsSinceEpoch(wall, Qt::UTC);
    icaltimetype result = icaltime_null_time();
    result.year = time.date().year();
    result.month = time.date().month();
    result.day = time.date().day();
    result.hour = time.time().hour();
    result.minute = time.time().minute();
    result.second = time.time().second();
    result.is_date = isDate ? 1 : 0;
    return result;
}

/// A rule may end on a day that there is not: the 71st of a month is the 71st day from its beginning.
qint64 wallOf(const icaltimetype &given)
{
    const icaltimetype time = icaltime_normalize(given);
    QDate day(time.year, time.month, time.day);
    if (!day.isValid())
        day = QDate(1, 1, 1);
    const qint64 midnight = (day.toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * daySeconds;
    return time.is_date ? midnight : midnight + time.hour * 3600 + time.minute * 60 + time.second;
}

/// The library looks for the next time until it finds one, in steps of the frequency; of steps shorter than an hour it
/// needs too many.
bool maySearchForEver(const QByteArray &rule)
{
    const bool isShort = rule.contains("SECONDLY") || rule.contains("MINUTELY");
    return isShort && rule.contains("BY");
}

/// How long a step of a frequency is, in seconds, and what it costs, measured with a library that uses ICU.
struct Step
{
    qint64 seconds = 1;
    qint64 cost = 4;
};

Step stepOf(icalrecurrencetype_frequency frequency)
{
    switch (frequency) {
    case ICAL_MINUTELY_RECURRENCE:
        return {.seconds = 60};
    case ICAL_HOURLY_RECURRENCE:
        return {.seconds = 3600};
    case ICAL_DAILY_RECURRENCE:
        return {.seconds = daySeconds};
    case ICAL_WEEKLY_RECURRENCE:
        return {.seconds = 7 * daySeconds};
    case ICAL_MONTHLY_RECURRENCE:
        return {.seconds = 28 * daySeconds, .cost = 12};
    case ICAL_YEARLY_RECURRENCE:
        return {.seconds = 365 * daySeconds, .cost = 14};
    default:
        return {};
    }
}

[[nodiscard]] bool isGiven(const short *part)
{
    return *part != ICAL_RECURRENCE_ARRAY_MAX;
}

/// Whether a part that is given has a number that is not beyond `most`, counted from either end.
[[nodiscard]] bool hasWithin(
    const short *part, int most, int (*numberOf)(short) = [](short value) -> int { return value; })
{
    const bool isAbsent = !isGiven(part);
    while (isGiven(part) && std::abs(numberOf(*part)) > most)
        ++part;
    return isAbsent || isGiven(part);
}

[[nodiscard]] bool contains(const short *part, int value)
{
    while (*part != ICAL_RECURRENCE_ARRAY_MAX && *part != value)
        ++part;
    return *part == value;
}

/// Counts the days of a rule of days or weeks that says nothing of times. Nearly all rules are such; the library needs
/// microseconds for each of their times, and passes over days that are counted from the end of the month.
class DayCounter
{
public:
    /// Nothing for any other rule.
    static std::optional<DayCounter> of(const icalrecurrencetype &rule, qint64 start)
    {
        const bool isWeekly = rule.freq == ICAL_WEEKLY_RECURRENCE;
        if ((!isWeekly && rule.freq != ICAL_DAILY_RECURRENCE) || (isWeekly && isGiven(rule.by_month_day)) ||
            isGiven(rule.by_year_day) || isGiven(rule.by_week_no) || isGiven(rule.by_set_pos) ||
            isGiven(rule.by_hour) || isGiven(rule.by_minute) || isGiven(rule.by_second))
            return std::nullopt;
        DayCounter result;
        result.m_start = start;
        result.m_day = floorDivided(start, daySeconds);
        result.m_weekdays = isWeekly ? 1 << weekday(result.m_day) : 0x7f;
        if (isGiven(rule.by_day))
            result.m_weekdays = 0;
        for (const short *day = rule.by_day; *day != ICAL_RECURRENCE_ARRAY_MAX; ++day) {
            if (icalrecurrencetype_day_position(*day) != 0)
                return std::nullopt;
            result.m_weekdays |= 1 << (icalrecurrencetype_day_day_of_week(*day) - ICAL_SUNDAY_WEEKDAY);
        }
        result.m_period = std::max<qint64>(1, rule.interval) * (isWeekly ? 7 : 1);
        const qint64 weekStart = rule.week_start == ICAL_NO_WEEKDAY ? ICAL_MONDAY_WEEKDAY : rule.week_start;
        const qint64 daysIntoWeek = (weekday(result.m_day) - (weekStart - ICAL_SUNDAY_WEEKDAY) + 7) % 7;
        result.m_anchor = isWeekly ? result.m_day - daysIntoWeek : result.m_day;
        result.m_daysOfPeriod = isWeekly ? 7 : 1;
        result.m_left = rule.count > 0 ? rule.count : std::numeric_limits<qint64>::max();
        result.m_until = wallOf(rule.until);
        return result;
    }

    /// The next time of that rule; nothing after its end.
    std::optional<qint64> next(const icalrecurrencetype &rule)
    {
        for (; m_left > 0; ++m_day) {
            const qint64 wall = m_day * daySeconds + m_start - floorDivided(m_start, daySeconds) * daySeconds;
            if (wall > m_until)
                break;
            const bool isInPeriod = (m_day - m_anchor) % m_period < m_daysOfPeriod;
            if (!isInPeriod || (m_weekdays >> weekday(m_day) & 1) == 0 || !isInMonth(rule))
                continue;
            ++m_day;
            --m_left;
            return wall;
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] bool isInMonth(const icalrecurrencetype &rule) const
    {
        if (!isGiven(rule.by_month) && !isGiven(rule.by_month_day))
            return true;
        const QDate date = QDate::fromJulianDay(m_day + QDate(1970, 1, 1).toJulianDay());
        return (!isGiven(rule.by_month) || contains(rule.by_month, date.month())) &&
               (!isGiven(rule.by_month_day) || contains(rule.by_month_day, date.day()) ||
                contains(rule.by_month_day, date.day() - date.daysInMonth() - 1));
    }

    /// 0 is Sunday; 1970-01-01 was a Thursday.
    static qint64 weekday(qint64 day) { return day + 4 - floorDivided(day + 4, 7) * 7; }
    static qint64 floorDivided(qint64 dividend, qint64 divisor)
    {
        return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
    }

    qint64 m_start = 0;
    /// Days since 1970-01-01: the one to look at next, and the first of the first period.
    qint64 m_day = 0;
    qint64 m_anchor = 0;
    /// In days; those at its beginning count.
    qint64 m_period = 1;
    qint64 m_daysOfPeriod = 1;
    int m_weekdays = 0;
    qint64 m_left = 0;
    qint64 m_until = 0;
};

/// Seconds that this thread has been at work.
double workedSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// A rule, read by the library and followed from a start.
class FollowedRule
{
public:
    /// One that gives no time.
    FollowedRule() = default;
    /// Nothing where the rule cannot be read.
    static std::optional<FollowedRule> read(const QByteArray &rule)
    {
        const QByteArray text = rule.trimmed().toUpper();
        if (text.size() > longestRule)
            return std::nullopt;
        icalerror_set_errors_are_fatal(0);
        FollowedRule result;
        result.m_rule = icalrecurrencetype_from_string(text.constData());
        // A calendar of another culture (RFC 7529) is not supported; its name is the library's to free.
        const std::unique_ptr<char, decltype(&std::free)> scale(result.m_rule.rscale, &std::free);
        if (result.m_rule.freq == ICAL_NO_RECURRENCE || result.m_rule.rscale)
            return std::nullopt;
        return result;
    }

    [[nodiscard]] bool isEndless() const { return m_rule.count == 0 && icaltime_is_null_time(m_rule.until); }

    /// From here on times are given. False where the rule cannot be followed.
    [[nodiscard]] bool begin(const RuleStart &start)
    {
        bringUntilToWall(start);
        if (!follow(start.wall, start.isDate))
            return false;
        m_next = icalrecur_iterator_next(m_iterator.get());
        return true;
    }

    enum class Followed { Yes, TooLarge, Unreadable };

    /// Likewise, from a time before the window on where the rule gives the same times from there, up to its end. Takes
    /// the work that this needs at most from the window's.
    [[nodiscard]] Followed beginWithin(const RuleStart &start, RuleWindow &window)
    {
        bringUntilToWall(start);
        if (icaltime_is_null_time(m_rule.until) || wallOf(m_rule.until) > window.last)
            m_rule.until = icalTime(window.last, start.isDate);
        else if (wallOf(m_rule.until) < window.first)
            return Followed::Yes;
        const qint64 begin = nearWindow(start.wall, window);
        const qint64 length = std::max<qint64>(0, window.last - begin);
        m_days = DayCounter::of(m_rule, begin);
        const qint64 cost =
            m_days ? 1 + length / daySeconds / daysCounted : openingCost + length / stepSeconds() * stepCost();
        if (cost > std::min(window.budget.steps, mostSteps) || (mayBeBarren() && window.budget.barrenRules <= 0))
            return Followed::TooLarge;
        window.budget.steps -= cost;
        if (m_days)
            return Followed::Yes;
        const double before = workedSeconds();
        const bool isFollowed = follow(begin, start.isDate);
        if (isFollowed)
            m_next = icalrecur_iterator_next(m_iterator.get());
        if (icaltime_is_null_time(m_next) && workedSeconds() - before > barrenSeconds)
            --window.budget.barrenRules;
        return isFollowed ? Followed::Yes : Followed::Unreadable;
    }

    std::optional<qint64> next()
    {
        if (m_days)
            return m_days->next(m_rule);
        if (!m_iterator || icaltime_is_null_time(m_next))
            return std::nullopt;
        ++m_given;
        return wallOf(std::exchange(m_next, icalrecur_iterator_next(m_iterator.get())));
    }

    /// Of a time that is given.
    [[nodiscard]] qint64 givenCost() const { return m_days ? 0 : 3; }

    /// The work that was taken for the time after `last`, which is the last of a number of times.
    [[nodiscard]] qint64 savedAfter(qint64 last, const RuleWindow &window) const
    {
        const bool isWorkSaved = m_rule.count > 0 && m_given == m_rule.count && last < window.last;
        return isWorkSaved ? (window.last - last) / stepSeconds() * stepCost() : 0;
    }

private:
    /// How many days are looked at in a microsecond.
    static constexpr qint64 daysCounted = 50;
    static constexpr double barrenSeconds = 0.05;
    static constexpr qint64 openingCost = 40;
    /// Of one rule: half a second.
    static constexpr qint64 mostSteps = 500'000;

    [[nodiscard]] qint64 stepSeconds() const
    {
        return stepOf(m_rule.freq).seconds * std::max<qint64>(1, m_rule.interval);
    }
    [[nodiscard]] qint64 stepCost() const { return stepOf(m_rule.freq).cost; }

    [[nodiscard]] bool follow(qint64 wall, bool isDate)
    {
        m_iterator.reset(icalrecur_iterator_new(m_rule, icalTime(wall, isDate)));
        return m_iterator != nullptr;
    }

    /// The library searches months and years up to year 2582 for days that no month has, whatever the end of the rule.
    /// False only of rules that surely have such days.
    [[nodiscard]] bool mayBeBarren() const
    {
        const bool isMonthly = m_rule.freq == ICAL_MONTHLY_RECURRENCE;
        if (!isMonthly && m_rule.freq != ICAL_YEARLY_RECURRENCE)
            return false;
        const bool hasOrdinals = isGiven(m_rule.by_day) && icalrecurrencetype_day_position(m_rule.by_day[0]) != 0;
        const bool isMonthLimited =
            isGiven(m_rule.by_month) &&
            (isGiven(m_rule.by_week_no) || isGiven(m_rule.by_year_day) || (isMonthly && m_rule.interval > 1));
        return isMonthLimited || !hasWithin(m_rule.by_month_day, 28) || !hasWithin(m_rule.by_year_day, 365) ||
               !hasWithin(m_rule.by_week_no, 52) || !hasWithin(m_rule.by_set_pos, 1) ||
               !hasWithin(m_rule.by_day, 4, icalrecurrencetype_day_position) ||
               (hasOrdinals && isGiven(m_rule.by_month_day));
    }

    /// The end of the rule on the clock of the event.
    void bringUntilToWall(const RuleStart &start)
    {
        if (icaltime_is_null_time(m_rule.until))
            return;
        const bool isUtc = !m_rule.until.is_date && icaltime_is_utc(m_rule.until);
        qint64 until = wallOf(m_rule.until);
        if (m_rule.until.is_date && !start.isDate)
            until += daySeconds - 1;
        else if (isUtc && start.wallAt)
            until = start.wallAt(until);
        m_rule.until = icalTime(until, start.isDate);
    }

    /// Whole periods after which the rule begins anew are passed over; of months and years only where that leaves the
    /// day of the month as it is, and where the day of the week does not count.
    [[nodiscard]] qint64 nearWindow(qint64 wall, const RuleWindow &window) const
    {
        if (m_rule.count != 0 || wall >= window.first)
            return wall;
        const qint64 interval = std::max<qint64>(1, m_rule.interval);
        const QDateTime start = QDateTime::fromSecsSinceEpoch(wall, Qt::UTC);
        const QDate first = QDateTime::fromSecsSinceEpoch(window.first, Qt::UTC).date();
        if (m_rule.freq == ICAL_MONTHLY_RECURRENCE || m_rule.freq == ICAL_YEARLY_RECURRENCE) {
            if (start.date().day() > 28 || m_rule.by_week_no[0] != ICAL_RECURRENCE_ARRAY_MAX)
                return wall;
            const qint64 months = m_rule.freq == ICAL_MONTHLY_RECURRENCE ? interval : 12 * interval;
            const qint64 between = (first.year() - start.date().year()) * 12 + first.month() - start.date().month() - 1;
            const qint64 passed = std::max<qint64>(0, between) / months * months;
            return start.addMonths(static_cast<int>(passed)).toSecsSinceEpoch();
        }
        const qint64 days = m_rule.freq == ICAL_WEEKLY_RECURRENCE ? 7 : 1;
        const qint64 period = interval * days * daySeconds;
        return wall + (window.first - wall) / period * period;
    }

    icalrecurrencetype m_rule = {};
    std::unique_ptr<icalrecur_iterator, decltype(&icalrecur_iterator_free)> m_iterator{nullptr,
                                                                                       &icalrecur_iterator_free};
    icaltimetype m_next = icaltime_null_time();
    std::optional<DayCounter> m_days;
    /// Times that the library gave.
    qint64 m_given = 0;
};

/// The rule, ready to give its times; nothing where that is too much work.
std::optional<FollowedRule> followedWithin(const QByteArray &rule, const RuleStart &start, RuleWindow &window)
{
    using Followed = FollowedRule::Followed;
    std::optional<FollowedRule> followed = FollowedRule::read(rule);
    const Followed outcome = followed ? followed->beginWithin(start, window) : Followed::Unreadable;
    if (outcome == Followed::TooLarge)
        return std::nullopt;
    if (outcome == Followed::Unreadable)
        window.unreadableRules.append(rule);
    return outcome == Followed::Yes ? std::move(followed) : FollowedRule();
}

} // namespace

std::optional<std::vector<qint64>> expandedRule(const QByteArray &rule, const RuleStart &start, qint64 horizon)
{
    std::optional<FollowedRule> followed = FollowedRule::read(rule);
    if (!followed || maySearchForEver(rule.toUpper()))
        return std::nullopt;
    const bool isEndless = followed->isEndless();
    if (!followed->begin(start))
        return std::nullopt;
    std::vector<qint64> times;
    while (const auto wall = followed->next()) {
        if (*wall > horizon && (isEndless || times.size() >= mostOccurrences))
            return times;
        if (times.size() >= mostOccurrences)
            return std::nullopt;
        times.push_back(*wall);
    }
    return times;
}

std::optional<std::vector<qint64>> ruleTimesWithin(const QByteArray &rule, const RuleStart &start, RuleWindow &window)
{
    std::optional<FollowedRule> followed = followedWithin(rule, start, window);
    if (!followed)
        return std::nullopt;
    std::vector<qint64> times;
    qint64 last = start.wall;
    while (const auto wall = followed->next()) {
        last = *wall;
        if ((window.budget.steps -= followed->givenCost()) < 0 || times.size() >= mostOccurrences)
            return std::nullopt;
        if (last >= window.first)
            times.push_back(last);
    }
    window.budget.steps += followed->savedAfter(last, window);
    return times;
}

std::optional<qint64> ruleTimeAfter(const QByteArray &rule, const RuleStart &start, qint64 after, RuleWindow window)
{
    window.first = after;
    std::optional<FollowedRule> followed = followedWithin(rule, start, window);
    while (followed) {
        const auto wall = followed->next();
        if (!wall || *wall > after)
            return wall;
        if ((window.budget.steps -= followed->givenCost()) < 0)
            break;
    }
    return std::nullopt;
}

} // namespace tessaly

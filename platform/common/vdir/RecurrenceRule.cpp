#include "platform/common/vdir/RecurrenceRule.h"

#include <libical/ical.h>

#include <QDateTime>

#include <memory>

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

qint64 wallOf(const icaltimetype &time)
{
    const QDate day(time.year, time.month, time.day);
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

/// The end of a rule on the clock of the event.
void bringUntilToWall(icalrecurrencetype &rule, const RuleStart &start)
{
    if (icaltime_is_null_time(rule.until))
        return;
    const bool isUtc = !rule.until.is_date && icaltime_is_utc(rule.until);
    qint64 until = wallOf(rule.until);
    if (rule.until.is_date && !start.isDate)
        until += daySeconds - 1;
    else if (isUtc && start.wallAt)
        until = start.wallAt(until);
    rule.until = icalTime(until, start.isDate);
}

} // namespace

std::optional<std::vector<qint64>> expandedRule(const QByteArray &rule, const RuleStart &start, qint64 horizon)
{
    const QByteArray text = rule.trimmed().toUpper();
    if (text.size() > longestRule || maySearchForEver(text))
        return std::nullopt;
    icalerror_set_errors_are_fatal(0);
    icalrecurrencetype read = icalrecurrencetype_from_string(text.constData());
    // A calendar of another culture (RFC 7529) is not supported; its name is the library's to free.
    const std::unique_ptr<char, decltype(&std::free)> scale(read.rscale, &std::free);
    if (read.freq == ICAL_NO_RECURRENCE || read.rscale)
        return std::nullopt;
    bringUntilToWall(read, start);
    const bool isEndless = read.count == 0 && icaltime_is_null_time(read.until);
    const std::unique_ptr<icalrecur_iterator, decltype(&icalrecur_iterator_free)> iterator(
        icalrecur_iterator_new(read, icalTime(start.wall, start.isDate)), &icalrecur_iterator_free);
    if (!iterator)
        return std::nullopt;
    std::vector<qint64> times;
    for (;;) {
        const icaltimetype next = icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(next))
            return times;
        const qint64 wall = wallOf(next);
        if (wall > horizon && (isEndless || times.size() >= mostOccurrences))
            return times;
        if (times.size() >= mostOccurrences)
            return std::nullopt;
        times.push_back(wall);
    }
}

std::optional<EventDuration> durationFrom(const QByteArray &value)
{
    icalerror_set_errors_are_fatal(0);
    const icaldurationtype read = icaldurationtype_from_string(value.trimmed().toUpper().constData());
    if (icaldurationtype_is_bad_duration(read))
        return std::nullopt;
    if (read.is_neg)
        return EventDuration{};
    return EventDuration{.days = qint64{read.weeks} * 7 + read.days,
                         .seconds = qint64{read.hours} * 3600 + qint64{read.minutes} * 60 + read.seconds};
}

} // namespace tessaly

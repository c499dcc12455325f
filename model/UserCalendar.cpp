#include "model/UserCalendar.h"

#include "model/DateLocale.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr qint64 dayMilliseconds = 86400000;
constexpr qint64 unixEpochJulianDay = 2440588;
// What QDate and QDateTime can both express; anything beyond is pulled back to it.
constexpr double latestUnixMilliseconds = 9.0e15;

qint64 unixMilliseconds(Instant instant)
{
    const double milliseconds = std::floor(instant.unixSeconds() * 1000.0);
    if (std::isnan(milliseconds))
        return 0;
    return static_cast<qint64>(std::clamp(milliseconds, -latestUnixMilliseconds, latestUnixMilliseconds));
}

Instant fromUnixMilliseconds(qint64 milliseconds)
{
    return Instant::fromUnixSeconds(static_cast<double>(milliseconds) / 1000.0);
}

/// Rounds down, so that times before 1970 come out right.
qint64 floorDivided(qint64 dividend, qint64 divisor)
{
    const qint64 quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

} // namespace

UserCalendar::UserCalendar(const QTimeZone &zone, Qt::DayOfWeek firstWeekday, const QLocale &locale)
    : m_zone(zone.isValid() ? zone : QTimeZone::utc()), m_transitions(std::make_shared<const ZoneTransitions>(zone)),
      m_firstWeekday(firstWeekday), m_locale(locale)
{
}

UserCalendar UserCalendar::system()
{
    const QLocale locale = dateLocale({qgetenv("LC_ALL"), qgetenv("LC_TIME"), qgetenv("LANG")});
    return {QTimeZone::systemTimeZone(), tessaly::firstWeekday(locale), locale};
}

qint64 UserCalendar::localMilliseconds(Instant instant) const
{
    const qint64 utc = unixMilliseconds(instant);
    return utc + m_transitions->offsetAt(floorDivided(utc, 1000)) * 1000;
}

QDateTime UserCalendar::dateTime(Instant instant) const
{
    return QDateTime::fromMSecsSinceEpoch(unixMilliseconds(instant), m_zone);
}

QDate UserCalendar::day(Instant instant) const
{
    return QDate::fromJulianDay(unixEpochJulianDay + floorDivided(localMilliseconds(instant), dayMilliseconds));
}

int UserCalendar::minuteOfDay(Instant instant) const
{
    const qint64 local = localMilliseconds(instant);
    return static_cast<int>((local - floorDivided(local, dayMilliseconds) * dayMilliseconds) / 60000);
}

Instant UserCalendar::instant(QDate day, QTime time) const
{
    const qint64 local = (day.toJulianDay() - unixEpochJulianDay) * dayMilliseconds + time.msecsSinceStartOfDay();
    const qint64 localSeconds = floorDivided(local, 1000);
    return fromUnixMilliseconds(m_transitions->unixSeconds(localSeconds) * 1000 + local - localSeconds * 1000);
}

Instant UserCalendar::startOfDay(QDate day) const
{
    const Instant midnight = instant(day, QTime(0, 0));
    if (minuteOfDay(midnight) == 0)
        return midnight;
    // The gap may have begun before midnight; then the day's first instant is the end of the gap.
    const QDateTime start = day.startOfDay(m_zone);
    return start.isValid() ? std::min(midnight, fromUnixMilliseconds(start.toMSecsSinceEpoch())) : midnight;
}

QDate UserCalendar::weekStart(QDate day) const
{
    const int back = (day.dayOfWeek() - static_cast<int>(m_firstWeekday) + 7) % 7;
    return day.addDays(-back);
}

QDate UserCalendar::monthStart(QDate day)
{
    return day.addDays(1 - day.day());
}

std::optional<Instant> UserCalendar::moved(Instant from, QDate day) const
{
    constexpr int latestYear = 9999;
    if (!day.isValid() || std::abs(day.year()) > latestYear)
        return std::nullopt;
    return instant(day, dateTime(from).time());
}

std::optional<Instant> UserCalendar::addingDays(Instant from, qint64 days) const
{
    return moved(from, day(from).addDays(days));
}

std::optional<Instant> UserCalendar::addingMonths(Instant from, int months) const
{
    return moved(from, day(from).addMonths(months));
}

} // namespace tessaly

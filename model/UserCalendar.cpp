#include "model/UserCalendar.h"

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

/// Floor division, so that days before 1970 come out right.
qint64 dayNumber(qint64 localMilliseconds)
{
    const qint64 quotient = localMilliseconds / dayMilliseconds;
    return localMilliseconds % dayMilliseconds < 0 ? quotient - 1 : quotient;
}

} // namespace

UserCalendar::UserCalendar(const QTimeZone &zone, Qt::DayOfWeek firstWeekday, const QLocale &locale)
    : m_zone(zone), m_firstWeekday(firstWeekday), m_locale(locale)
{
}

UserCalendar UserCalendar::system()
{
    const QLocale locale = QLocale::system();
    return {QTimeZone::systemTimeZone(), locale.firstDayOfWeek(), locale};
}

qint64 UserCalendar::offsetAt(qint64 unixMilliseconds) const
{
    return m_zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(unixMilliseconds, Qt::UTC));
}

QDateTime UserCalendar::dateTime(Instant instant) const
{
    return QDateTime::fromMSecsSinceEpoch(unixMilliseconds(instant), m_zone);
}

QDate UserCalendar::day(Instant instant) const
{
    const qint64 utc = unixMilliseconds(instant);
    return QDate::fromJulianDay(unixEpochJulianDay + dayNumber(utc + offsetAt(utc) * 1000));
}

int UserCalendar::minuteOfDay(Instant instant) const
{
    const qint64 utc = unixMilliseconds(instant);
    const qint64 local = utc + offsetAt(utc) * 1000;
    return static_cast<int>((local - dayNumber(local) * dayMilliseconds) / 60000);
}

Instant UserCalendar::instant(QDate day, QTime time) const
{
    const qint64 local = (day.toJulianDay() - unixEpochJulianDay) * dayMilliseconds + time.msecsSinceStartOfDay();
    const qint64 before = local - offsetAt(local - dayMilliseconds) * 1000;
    const qint64 after = local - offsetAt(local + dayMilliseconds) * 1000;
    const auto shows = [&](qint64 utc) { return utc + offsetAt(utc) * 1000 == local; };
    if (shows(before) && shows(after))
        return fromUnixMilliseconds(std::min(before, after));
    return fromUnixMilliseconds(shows(after) ? after : before);
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

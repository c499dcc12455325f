#include "model/UserCalendar.h"

#include <cmath>
#include <utility>

namespace tessaly {

UserCalendar::UserCalendar(QTimeZone zone, Qt::DayOfWeek firstWeekday, QLocale locale)
    : m_zone(std::move(zone)), m_firstWeekday(firstWeekday), m_locale(std::move(locale))
{
}

UserCalendar UserCalendar::system()
{
    const QLocale locale = QLocale::system();
    return {QTimeZone::systemTimeZone(), locale.firstDayOfWeek(), locale};
}

QDateTime UserCalendar::dateTime(Instant instant) const
{
    const double milliseconds = std::floor(instant.unixSeconds() * 1000.0);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds), m_zone);
}

QDate UserCalendar::day(Instant instant) const
{
    return dateTime(instant).date();
}

int UserCalendar::minuteOfDay(Instant instant) const
{
    return dateTime(instant).time().msecsSinceStartOfDay() / 60000;
}

Instant UserCalendar::instant(QDate day, QTime time) const
{
    const QDateTime local(day, time, m_zone);
    return Instant::fromUnixSeconds(static_cast<double>(local.toMSecsSinceEpoch()) / 1000.0);
}

Instant UserCalendar::startOfDay(QDate day) const
{
    const QDateTime start = day.startOfDay(m_zone);
    return Instant::fromUnixSeconds(static_cast<double>(start.toMSecsSinceEpoch()) / 1000.0);
}

QDate UserCalendar::weekStart(QDate day) const
{
    const int back = (day.dayOfWeek() - static_cast<int>(m_firstWeekday) + 7) % 7;
    return day.addDays(-back);
}

} // namespace tessaly

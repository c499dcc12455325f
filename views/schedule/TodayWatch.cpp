#include "views/schedule/TodayWatch.h"

#include <utility>

namespace tessaly {

TodayWatch::TodayWatch(const Clock &clock, UserCalendar calendar, QObject *parent)
    : QObject(parent), m_clock(clock), m_calendar(std::move(calendar)), m_midnight(clock.makeAlarm([this] { check(); }))
{
    check();
}

void TodayWatch::setCalendar(const UserCalendar &calendar)
{
    m_calendar = calendar;
    check();
}

void TodayWatch::check()
{
    const QDate today = m_calendar.day(m_clock.now());
    m_midnight->set(m_calendar.startOfDay(today.addDays(1)));
    if (today == m_today)
        return;
    m_today = today;
    emit todayChanged();
}

} // namespace tessaly

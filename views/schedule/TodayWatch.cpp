#include "views/schedule/TodayWatch.h"

#include "platform/Clock.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaly {

TodayWatch::TodayWatch(const Clock &clock, UserCalendar calendar, QObject *parent)
    : QObject(parent), m_clock(clock), m_calendar(std::move(calendar)), m_today(m_calendar.day(clock.now()))
{
    m_midnight.setSingleShot(true);
    // A coarse timer may fire a little early, and midnight would then be missed until the next one.
    m_midnight.setTimerType(Qt::PreciseTimer);
    connect(&m_midnight, &QTimer::timeout, this, &TodayWatch::check);
    if (auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        connect(application, &QGuiApplication::applicationStateChanged, this, &TodayWatch::check);
    waitForMidnight();
}

void TodayWatch::check()
{
    const QDate today = m_calendar.day(m_clock.now());
    waitForMidnight();
    if (today == m_today)
        return;
    m_today = today;
    emit todayChanged();
}

void TodayWatch::waitForMidnight()
{
    const Instant now = m_clock.now();
    const double seconds = m_calendar.startOfDay(m_calendar.day(now).addDays(1)).seconds - now.seconds;
    constexpr double longestDaySeconds = 90000;
    m_midnight.start(static_cast<int>(std::ceil(std::clamp(seconds, 0.0, longestDaySeconds) * 1000)) + 1);
}

} // namespace tessaly

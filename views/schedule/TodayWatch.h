#pragma once

#include "model/UserCalendar.h"

#include <QDate>
#include <QObject>
#include <QTimer>

namespace tessaly {

class Clock;

/// Knows which day it is. One timer waits for the next midnight; whenever the application comes to the front the clock
/// is read again, because a sleep or a changed clock makes the timer late.
class TodayWatch : public QObject
{
    Q_OBJECT

public:
    /// The clock must outlive the watch.
    TodayWatch(const Clock &clock, UserCalendar calendar, QObject *parent = nullptr);

    [[nodiscard]] QDate today() const { return m_today; }
    /// Reads the clock, and emits todayChanged() if another day has begun.
    void check();

signals:
    void todayChanged();

private:
    void waitForMidnight();

    const Clock &m_clock;
    UserCalendar m_calendar;
    QTimer m_midnight;
    QDate m_today;
};

} // namespace tessaly

#pragma once

#include "model/UserCalendar.h"
#include "platform/Clock.h"

#include <QDate>
#include <QObject>

#include <memory>

namespace tessaly {

/// Knows which day it is. It waits for the next midnight on the wall clock and is idle until then; a sleep of the
/// machine or a clock that is set wakes it as well.
class TodayWatch : public QObject
{
    Q_OBJECT

public:
    /// The clock must outlive the watch.
    TodayWatch(const Clock &clock, UserCalendar calendar, QObject *parent = nullptr);

    [[nodiscard]] QDate today() const { return m_today; }
    /// Looks at the days of another calendar from now on, and at the clock.
    void setCalendar(const UserCalendar &calendar);
    /// Reads the clock, and emits todayChanged() if it is another day.
    void check();

signals:
    void todayChanged();

private:
    const Clock &m_clock;
    UserCalendar m_calendar;
    QDate m_today;
    std::unique_ptr<Alarm> m_midnight;
};

} // namespace tessaly

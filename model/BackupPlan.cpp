#include "model/BackupPlan.h"

#include "model/UserCalendar.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaly {

namespace {

/// Lets the first generation of each new period pass, for as many periods as are kept.
class Periods
{
public:
    explicit Periods(int count) : m_left(count) {}

    [[nodiscard]] bool keeps(qint64 period)
    {
        if (m_left == 0 || period == m_last)
            return false;
        m_last = period;
        --m_left;
        return true;
    }

private:
    int m_left;
    /// None at first; GCC 12 takes an optional for uninitialized here.
    qint64 m_last = std::numeric_limits<qint64>::min();
};

/// Decides on one generation after the other, from the newest to the oldest.
class Plan
{
public:
    Plan(const UserCalendar &calendar, const BackupLimits &limits)
        : m_calendar(calendar), m_hours(limits.hours), m_days(limits.days), m_months(limits.months),
          m_restorePoints(limits.restorePoints)
    {
    }

    [[nodiscard]] bool keeps(const Generation &generation)
    {
        if (generation.isRestorePoint())
            return m_restorePoints-- > 0;
        const QDate day = m_calendar.day(generation.moment);
        // Hours since 1970: one that is repeated when the clocks change counts twice.
        const bool isOfHour = m_hours.keeps(static_cast<qint64>(std::floor(generation.moment.unixSeconds() / 3600)));
        const bool isOfDay = m_days.keeps(day.toJulianDay());
        const bool isOfMonth = m_months.keeps(UserCalendar::monthStart(day).toJulianDay());
        return isOfHour || isOfDay || isOfMonth;
    }

private:
    const UserCalendar &m_calendar;
    Periods m_hours;
    Periods m_days;
    Periods m_months;
    int m_restorePoints;
};

} // namespace

QList<Generation> outdatedGenerations(QList<Generation> generations, const UserCalendar &calendar,
                                      const BackupLimits &limits)
{
    std::sort(generations.begin(), generations.end(),
              [](const Generation &a, const Generation &b) { return a.moment > b.moment; });
    Plan plan(calendar, limits);
    QList<Generation> outdated;
    qint64 size = 0;
    for (const Generation &generation : std::as_const(generations)) {
        const bool isWanted = plan.keeps(generation);
        if (isWanted)
            size += generation.size;
        const bool isNewest = &generation == &generations.constFirst();
        if (!isWanted || (size > limits.size && !isNewest))
            outdated.append(generation);
    }
    return outdated;
}

} // namespace tessaly

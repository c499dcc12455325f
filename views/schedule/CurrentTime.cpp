#include "views/schedule/CurrentTime.h"

#include "model/ScheduleRules.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"

#include <cmath>
#include <utility>

namespace tessaly {

CurrentTime::CurrentTime(QObject *parent) : QObject(parent)
{
}

CurrentTime::~CurrentTime() = default;

void CurrentTime::setStore(PlannerStore *store)
{
    m_store = store;
    m_alarm = store->clock().makeAlarm([this] { look(); });
}

void CurrentTime::follow(const QList<QDate> &days, const WeekMeasures &measures)
{
    m_days = days;
    m_measures = measures;
    look();
}

void CurrentTime::look()
{
    const Instant now = m_store->clock().now();
    m_now = timePlace(now, m_days, m_measures, m_store->calendar());
    m_text = m_now ? timeRangeText(now, std::nullopt, m_store->calendar()) : QString();
    setAlarm();
    emit moved();
}

void CurrentTime::setAlarm()
{
    const Instant now = m_store->clock().now();
    const UserCalendar &calendar = m_store->calendar();
    const QDate today = calendar.day(now);
    const Instant begin = calendar.instant(today, QTime(m_measures.startHour % 24, 0));
    if (m_now)
        m_alarm->set({(std::floor(now.seconds / 60) + 1) * 60});
    else if (m_days.contains(today) && now < begin)
        m_alarm->set(begin);
    else
        m_alarm->cancel();
}

} // namespace tessaly

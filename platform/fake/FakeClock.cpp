#include "platform/fake/FakeClock.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tessaly {

class FakeClock::FakeAlarm final : public Alarm
{
public:
    FakeAlarm(QList<FakeAlarm *> &alarms, std::function<void()> callback)
        : m_alarms(alarms), m_callback(std::move(callback))
    {
        m_alarms.append(this);
    }
    ~FakeAlarm() override { m_alarms.removeOne(this); }
    Q_DISABLE_COPY_MOVE(FakeAlarm)

    void set(Instant when) override { m_when = when; }
    void cancel() override { m_when.reset(); }

    [[nodiscard]] const std::optional<Instant> &when() const { return m_when; }
    void ring()
    {
        m_when.reset();
        m_callback();
    }

private:
    QList<FakeAlarm *> &m_alarms;
    std::function<void()> m_callback;
    std::optional<Instant> m_when;
};

class FakeClock::FakeZoneWatch final : public ZoneWatch
{
public:
    FakeZoneWatch(QList<FakeZoneWatch *> &watches, std::function<void()> callback)
        : m_watches(watches), m_callback(std::move(callback))
    {
        m_watches.append(this);
    }
    ~FakeZoneWatch() override { m_watches.removeOne(this); }
    Q_DISABLE_COPY_MOVE(FakeZoneWatch)

    void tell() { m_callback(); }

private:
    QList<FakeZoneWatch *> &m_watches;
    std::function<void()> m_callback;
};

std::unique_ptr<ZoneWatch> FakeClock::watchZone(std::function<void()> callback) const
{
    return std::make_unique<FakeZoneWatch>(m_zoneWatches, std::move(callback));
}

void FakeClock::setZone(const QTimeZone &zone)
{
    m_zone = zone;
    const QList<FakeZoneWatch *> watches = m_zoneWatches;
    for (FakeZoneWatch *watch : watches)
        watch->tell();
}

std::unique_ptr<Alarm> FakeClock::makeAlarm(std::function<void()> callback) const
{
    return std::make_unique<FakeAlarm>(m_alarms, std::move(callback));
}

void FakeClock::setNow(Instant now)
{
    m_now = now;
    const QList<FakeAlarm *> alarms = m_alarms;
    for (FakeAlarm *alarm : alarms) {
        // An earlier call may have deleted it.
        if (m_alarms.contains(alarm) && alarm->when())
            alarm->ring();
    }
}

void FakeClock::advance(double seconds)
{
    const Instant end = m_now.plus(seconds);
    while (true) {
        FakeAlarm *next = nullptr;
        for (FakeAlarm *alarm : std::as_const(m_alarms)) {
            if (alarm->when() && alarm->when() <= end && (!next || alarm->when() < next->when()))
                next = alarm;
        }
        if (!next)
            break;
        m_now = std::max(m_now, *next->when());
        next->ring();
    }
    m_now = end;
}

qsizetype FakeClock::pendingAlarms() const
{
    return std::ranges::count_if(m_alarms, [](const FakeAlarm *alarm) { return alarm->when().has_value(); });
}

} // namespace tessaly

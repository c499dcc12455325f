#pragma once

#include "platform/Clock.h"

#include <QList>

namespace tessaly {

/// A clock that stands still until it is set or advanced. Its alarms ring from within setNow() and advance().
class FakeClock final : public Clock
{
public:
    explicit FakeClock(Instant start) : m_now(start) {}

    [[nodiscard]] Instant now() const override { return m_now; }
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const override;

    [[nodiscard]] QTimeZone zone() const override { return m_zone; }
    [[nodiscard]] std::unique_ptr<ZoneWatch> watchZone(std::function<void()> callback) const override;

    /// The user travels; the watches call back.
    void setZone(const QTimeZone &zone);
    /// The clock is set: every alarm that is set rings.
    void setNow(Instant now);
    /// Time passes: alarms ring each at its time, in order.
    void advance(double seconds);
    /// How many alarms are set.
    [[nodiscard]] qsizetype pendingAlarms() const;

private:
    class FakeAlarm;
    class FakeZoneWatch;

    Instant m_now;
    QTimeZone m_zone = QTimeZone::utc();
    mutable QList<FakeAlarm *> m_alarms;
    mutable QList<FakeZoneWatch *> m_zoneWatches;
};

} // namespace tessaly

#pragma once

#include "platform/Clock.h"

namespace tessaly {

/// The clock of the machine. Its alarms look at the clock at least once in 30 seconds, since the timers of the event
/// loop neither count sleep nor notice that the clock was set.
class SystemClock : public Clock
{
public:
    [[nodiscard]] Instant now() const override;
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const override;
    [[nodiscard]] QTimeZone zone() const override { return QTimeZone::systemTimeZone(); }
    /// Null.
    [[nodiscard]] std::unique_ptr<ZoneWatch> watchZone(std::function<void()> callback) const override;
};

} // namespace tessaly

#pragma once

#include "platform/Clock.h"

namespace tessaly {

/// The clock of the machine with alarms of the kernel (timerfd_create(2), CLOCK_REALTIME): nothing runs until the time
/// has come, the machine woke up past it, or the clock was set. Its zone is what localtime(5) links to.
class LinuxClock final : public Clock
{
public:
    /// Where the system's zone is set; empty while the environment sets another one for this process.
    [[nodiscard]] static QString localtimePath();

    explicit LinuxClock(const QString &localtimePath = LinuxClock::localtimePath());

    [[nodiscard]] Instant now() const override;
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const override;
    [[nodiscard]] QTimeZone zone() const override;
    /// Looks when something in the link's directory changes, and costs nothing until then.
    [[nodiscard]] std::unique_ptr<ZoneWatch> watchZone(std::function<void()> callback) const override;

private:
    QString m_localtimePath;
};

} // namespace tessaly

#pragma once

#include "platform/common/SystemClock.h"

namespace tessaly {

/// The clock of the machine with alarms of the kernel (timerfd_create(2), CLOCK_REALTIME): nothing runs until the time
/// has come, the machine woke up past it, or the clock was set.
class LinuxClock final : public SystemClock
{
public:
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const override;
};

} // namespace tessaly

#pragma once

#include "model/Instant.h"

#include <functional>
#include <memory>

namespace tessaly {

/// Calls back at a time of the wall clock. Deleting it cancels it.
class Alarm
{
public:
    virtual ~Alarm() = default;

    /// One call once the clock reads `when` or later, from the event loop and never from within set(). It also comes
    /// when the clock is set to another time or the machine wakes up: whoever is called looks at the clock and sets
    /// the alarm again. Replaces what was set before.
    virtual void set(Instant when) = 0;
    virtual void cancel() = 0;
};

/// The current time.
class Clock
{
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;
    /// An alarm that is not set. It must not outlive the clock.
    [[nodiscard]] virtual std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const = 0;
};

} // namespace tessaly

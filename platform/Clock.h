#pragma once

#include "model/Instant.h"

#include <QTimeZone>

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

/// Watches the user's time zone. Deleting it ends that.
class ZoneWatch
{
public:
    virtual ~ZoneWatch() = default;
};

/// The current time and where the user's clock hangs.
class Clock
{
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;
    /// An alarm that is not set. It must not outlive the clock.
    [[nodiscard]] virtual std::unique_ptr<Alarm> makeAlarm(std::function<void()> callback) const = 0;
    /// The user's time zone now.
    [[nodiscard]] virtual QTimeZone zone() const = 0;
    /// Calls back from the event loop whenever zone() has changed. It must not outlive the clock; null where the system
    /// cannot tell.
    [[nodiscard]] virtual std::unique_ptr<ZoneWatch> watchZone(std::function<void()> callback) const = 0;
};

} // namespace tessaly

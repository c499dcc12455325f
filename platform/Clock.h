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

    /// Calls back once when the clock reads `when` or later, from the event loop and never from within set(). Also
    /// calls back when the clock is set or the machine wakes up: the callback checks the clock and sets the alarm
    /// again. Replaces what was set before.
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
    /// Calls back from the event loop whenever zone() has changed. It must not outlive the clock; null where changes
    /// cannot be watched.
    [[nodiscard]] virtual std::unique_ptr<ZoneWatch> watchZone(std::function<void()> callback) const = 0;
};

} // namespace tessaly

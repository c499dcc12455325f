#pragma once

#include "model/Instant.h"

#include <QUuid>

#include <optional>

namespace tessaly {

// When a link that is kept up to date is read again. Each link waits up to a tenth longer, always the same, so that
// many planners do not all ask one server in the same second.

/// Seconds after a reading: an hour, or as long as the calendar asks for, but at most 31 days.
[[nodiscard]] double updateDelay(std::optional<double> refreshSeconds, const QUuid &feedID);
/// Seconds after the latest of `failures` failures in a row: five minutes, doubled each time up to six hours.
[[nodiscard]] double retryDelay(int failures, const QUuid &feedID);

/// Whether a link is due when the clock jumped or the machine woke up: its last reading is more than five minutes
/// away, in either direction.
[[nodiscard]] bool isDueAfterGap(Instant lastReading, Instant now);

} // namespace tessaly

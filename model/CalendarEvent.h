#pragma once

#include "model/Instant.h"

#include <QString>

#include <optional>

namespace tessaly {

/// One event of the system's calendar, or one occurrence of a recurring event.
struct CalendarEvent
{
    /// Stable across runs and edits; two occurrences never share one.
    QString eventIdentifier = {};
    QString calendarIdentifier = {};
    /// The UID of RFC 5545, which all occurrences of an event share.
    QString uid = {};
    std::optional<QString> title = {};
    Instant startDate = {};
    /// Not before the start. An all-day event ends at the local midnight that follows its last day.
    Instant endDate = {};
    QString notes = {};

    bool operator==(const CalendarEvent &) const = default;
};

} // namespace tessaly

Q_DECLARE_TYPEINFO(tessaly::CalendarEvent, Q_RELOCATABLE_TYPE);

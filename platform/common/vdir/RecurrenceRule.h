#pragma once

#include <QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace tessaly {

/// What a rule is applied to. Times are seconds since 1970-01-01 00:00 on the event's own clock.
struct RuleStart
{
    qint64 wall = 0;
    bool isDate = false;
    /// The event's own clock at a point in time, given in seconds since 1970-01-01 UTC.
    std::function<qint64(qint64)> wallAt = {};
};

/// No event has more occurrences, and no zone more changes; one every day reaches from 1927 to 2036.
inline constexpr std::size_t mostOccurrences = 40000;

/// The times at which a recurrence rule (RFC 5545, 3.3.10) repeats, ascending. A rule without end stops at the horizon.
/// Nothing where the rule cannot be read, or gives more than mostOccurrences before the horizon; so do rules of hours
/// and less that may search for ever.
[[nodiscard]] std::optional<std::vector<qint64>> expandedRule(const QByteArray &rule, const RuleStart &start,
                                                              qint64 horizon);

/// A duration (RFC 5545, 3.3.6): days of the calendar, then seconds.
struct EventDuration
{
    qint64 days = 0;
    qint64 seconds = 0;
};
/// Nothing where it cannot be read; negative ones are none at all.
[[nodiscard]] std::optional<EventDuration> durationFrom(const QByteArray &value);

} // namespace tessaly

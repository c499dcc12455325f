#pragma once

#include <compare>

namespace tessaly {

/// A point in time: seconds (with fraction) since 2001-01-01 00:00:00 UTC. The double is kept exactly through
/// decoding and encoding. Calendar dates come from `UserCalendar` only.
struct Instant
{
    double seconds = 0;

    /// 2001-01-01 00:00:00 UTC as seconds since 1970-01-01 00:00:00 UTC.
    static constexpr double referenceUnixSeconds = 978307200.0;

    [[nodiscard]] static constexpr Instant fromUnixSeconds(double unixSeconds)
    {
        return {unixSeconds - referenceUnixSeconds};
    }
    [[nodiscard]] constexpr double unixSeconds() const { return seconds + referenceUnixSeconds; }
    [[nodiscard]] constexpr Instant plus(double moreSeconds) const { return {seconds + moreSeconds}; }

    auto operator<=>(const Instant &) const = default;
};

/// Length of a schedule without an end, in seconds.
inline constexpr double defaultScheduleSeconds = 3600;
/// Least length of a schedule saved from a form, in seconds.
inline constexpr double leastScheduleSeconds = 900;

} // namespace tessaly

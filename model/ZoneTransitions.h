#pragma once

#include <QByteArray>
#include <QTimeZone>

#include <optional>
#include <vector>

namespace tessaly {

/// The clock changes of one time zone, listed once so that a conversion is a binary search; QTimeZone alone takes some
/// fifty times as long. Immutable, hence safe to share between threads. Dates outside 1800 to 2100 are asked of
/// QTimeZone each time.
class ZoneTransitions
{
public:
    /// An invalid zone is UTC.
    explicit ZoneTransitions(const QTimeZone &zone);

    /// Seconds since 1970-01-01 UTC of a local wall-clock time, which is given as the seconds from 1970-01-01 00:00 on
    /// the same clock. A time that a clock change skips is read with the offset before the gap, a repeated one is the
    /// first (RFC 5545, 3.3.5).
    [[nodiscard]] qint64 unixSeconds(qint64 localSeconds) const;
    /// Seconds east of UTC at an instant.
    [[nodiscard]] qint64 offsetAt(qint64 unixSeconds) const;

private:
    struct Period
    {
        qint64 begin;
        /// Local time, by the period's own clock, at which the next period begins; never less than the one before.
        qint64 localEnd;
        qint64 offset;
    };
    [[nodiscard]] qint64 zoneOffset(qint64 unixSeconds) const;
    void closePeriods();

    QTimeZone m_zone;
    std::vector<Period> m_periods;
};

/// The zone of an identifier of the IANA time zone database, aliases included; nothing for any other text.
[[nodiscard]] std::optional<QTimeZone> zoneOfIdentifier(const QByteArray &identifier);

} // namespace tessaly

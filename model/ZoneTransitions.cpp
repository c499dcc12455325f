#include "model/ZoneTransitions.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace tessaly {

namespace {

constexpr qint64 firstListed = -5364662400; // 1800-01-01
constexpr qint64 lastListed = 4102444800;   // 2100-01-01
constexpr qint64 noEnd = std::numeric_limits<qint64>::max();

QDateTime utcDateTime(qint64 unixSeconds)
{
    return QDateTime::fromSecsSinceEpoch(unixSeconds, Qt::UTC);
}

// Of the identifiers without a slash Qt 6.4 knows none but UTC, though it opens the zone of each; but it also opens
// directories and text such as "ABC5", so a list distinguishes these names.
constexpr std::array<std::string_view, 43> plainIdentifiers{
    "CET",       "CST6CDT", "Cuba",    "EET",       "EST",       "EST5EDT",   "Egypt",    "Eire",     "GB",
    "GB-Eire",   "GMT",     "GMT+0",   "GMT-0",     "GMT0",      "Greenwich", "HST",      "Hongkong", "Iceland",
    "Iran",      "Israel",  "Jamaica", "Japan",     "Kwajalein", "Libya",     "MET",      "MST",      "MST7MDT",
    "NZ",        "NZ-CHAT", "Navajo",  "PRC",       "PST8PDT",   "Poland",    "Portugal", "ROC",      "ROK",
    "Singapore", "Turkey",  "UCT",     "Universal", "W-SU",      "WET",       "Zulu"};

bool isIdentifierCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' || c == '_' ||
           c == '+' || c == '-';
}

} // namespace

ZoneTransitions::ZoneTransitions(const QTimeZone &zone) : m_zone(zone.isValid() ? zone : QTimeZone::utc())
{
    m_periods.push_back({std::numeric_limits<qint64>::min(), noEnd, zoneOffset(firstListed)});
    const auto add = [this](const QTimeZone::OffsetData &data) {
        m_periods.push_back({data.atUtc.toSecsSinceEpoch(), noEnd, data.offsetFromUtc});
    };
    for (const QTimeZone::OffsetData &data : m_zone.transitions(utcDateTime(firstListed), utcDateTime(lastListed)))
        add(data);
    // transitions() of Qt 6.4 stops where the zone's table ends and its yearly rule begins; so does nextTransition() at
    // the very last change of the table.
    while (m_periods.size() > 1) {
        const auto next = m_zone.nextTransition(utcDateTime(m_periods.back().begin + 1));
        if (!next.atUtc.isValid() || next.atUtc.toSecsSinceEpoch() > lastListed ||
            next.atUtc.toSecsSinceEpoch() <= m_periods.back().begin)
            break;
        add(next);
    }
    closePeriods();
}

void ZoneTransitions::closePeriods()
{
    for (std::size_t i = 0; i + 1 < m_periods.size(); ++i) {
        const qint64 localEnd = m_periods[i + 1].begin + m_periods[i].offset;
        m_periods[i].localEnd = i > 0 ? std::max(m_periods[i - 1].localEnd, localEnd) : localEnd;
    }
}

qint64 ZoneTransitions::zoneOffset(qint64 unixSeconds) const
{
    return m_zone.offsetFromUtc(utcDateTime(unixSeconds));
}

qint64 ZoneTransitions::offsetAt(qint64 unixSeconds) const
{
    if (unixSeconds < firstListed || unixSeconds > lastListed)
        return zoneOffset(unixSeconds);
    return std::prev(std::ranges::upper_bound(m_periods, unixSeconds, {}, &Period::begin))->offset;
}

qint64 ZoneTransitions::unixSeconds(qint64 localSeconds) const
{
    constexpr qint64 day = 86400;
    if (localSeconds < firstListed + day || localSeconds > lastListed - day) {
        const qint64 before = localSeconds - zoneOffset(localSeconds - day);
        const qint64 after = localSeconds - zoneOffset(localSeconds + day);
        return before + zoneOffset(before) == localSeconds || after + zoneOffset(after) != localSeconds ? before
                                                                                                        : after;
    }
    // The first period that has not ended yet: of a repeated time the first, of a skipped time the one after the gap.
    const auto period = std::ranges::upper_bound(m_periods, localSeconds, {}, &Period::localEnd);
    const bool isSkipped = localSeconds - period->offset < period->begin;
    return localSeconds - (isSkipped ? std::prev(period)->offset : period->offset);
}

std::optional<QTimeZone> zoneOfIdentifier(const QByteArray &identifier)
{
    if (identifier.isEmpty() || !std::ranges::all_of(identifier, isIdentifierCharacter))
        return std::nullopt;
    // "UTC+08:00" is Qt's own; the next two are directories of the same zones under further names; of several slashes a
    // file system reads one.
    if (identifier.contains("//") || identifier.startsWith("UTC+") || identifier.startsWith("UTC-") ||
        identifier.startsWith("posix/") || identifier.startsWith("right/"))
        return std::nullopt;
    const std::string_view name(identifier.constData(), static_cast<std::size_t>(identifier.size()));
    const bool isListed = QTimeZone::isTimeZoneIdAvailable(identifier) ||
                          std::ranges::find(plainIdentifiers, name) != plainIdentifiers.end();
    if (!isListed && !identifier.contains('/'))
        return std::nullopt;
    const QTimeZone zone(identifier);
    // A directory of zones opens as a zone without a single change, not even the first one.
    if (!zone.isValid() || (!isListed && !zone.hasTransitions()))
        return std::nullopt;
    return zone;
}

} // namespace tessaly

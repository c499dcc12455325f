#pragma once

#include "model/Instant.h"
#include "model/Uuid.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

/// A subscribed iCalendar link.
struct CalendarFeed
{
    QUuid id = QUuid::createUuid();
    QString name = {};
    QString urlString = {};
    std::optional<Instant> lastUpdated = {};
    /// "#RRGGBB", upper-case: the colour of its schedules that have none of their own.
    std::optional<QString> colorHex = {};
    /// Updated by itself, every hour or as rarely as the calendar asks for.
    std::optional<bool> isKeptUpToDate = {};
    /// Read whole; otherwise a repeating event counts once.
    std::optional<bool> readsRepetitions = {};

    bool operator==(const CalendarFeed &) const = default;
};

/// The calendar identifier carried by every schedule of a feed: "feed:" and the feed's UUID.
[[nodiscard]] inline QString feedCalendarIdentifier(const QUuid &feedID)
{
    return QStringLiteral("feed:") + uuidText(feedID);
}
[[nodiscard]] inline bool isFeedCalendar(const QString &calendarIdentifier)
{
    return calendarIdentifier.startsWith(u"feed:");
}

} // namespace tessaly

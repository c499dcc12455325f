#pragma once

#include "platform/common/vdir/CalendarFile.h"
#include "platform/EventStore.h"

namespace tessaly {

/// What changes of a text take into account.
struct PatchContext
{
    const UserCalendar &user;
    EventZones &zones;
    /// Seconds since 1970-01-01 UTC.
    qint64 now = 0;
    /// How far endless recurrences are looked at.
    qint64 horizon = 0;
    QString fileName = {};
};

/// Which event of a file, or which occurrence of a recurring one: EventOccurrence::original.
struct EventKey
{
    QString uid = {};
    QByteArray original = {};
};

/// A file with this event alone. Nothing where its times are outside the years 1 to 9999.
[[nodiscard]] std::optional<QByteArray> newEventText(const NewEvent &event, qint64 now);
/// The text with title and times changed; every byte that does not have to change stands. Times keep their form (whole
/// days, the zone) where that can express the new ones, else they are in UTC. ErrorCode::CalendarEventMissing where the
/// text has no such event.
[[nodiscard]] Result<QByteArray> textWithChange(const QByteArray &text, const EventKey &key, const EventChange &change,
                                                const PatchContext &context);
/// The text without the event, or with this occurrence excluded; likewise. Empty where nothing remains in it.
[[nodiscard]] Result<QByteArray> textWithoutEvent(const QByteArray &text, const EventKey &key,
                                                  const PatchContext &context);
/// The event or occurrence in the events of a file.
[[nodiscard]] std::optional<EventOccurrence> findOccurrence(QList<FileEvent> &events, const EventKey &key,
                                                            const PatchContext &context);

} // namespace tessaly

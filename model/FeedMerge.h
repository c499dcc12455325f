#pragma once

#include "model/ICalendarReader.h"
#include "model/ScheduleItem.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QUuid>

#include <utility>

namespace tessaly {

/// Collects the schedules that the events of a feed become, in the order of the events. Of several events with one key
/// the first counts.
class FeedSchedules
{
public:
    explicit FeedSchedules(const QUuid &feedID, qsizetype expected = 0);

    /// `uid` is the whole UID line. `keyStart` is where the event begins, or the occurrence of a repeating event began
    /// before it was moved: what is noted there stays with it.
    void add(const QByteArray &uid, Instant keyStart, ScheduleItem schedule);
    [[nodiscard]] QList<ScheduleItem> take() { return std::move(m_schedules); }

private:
    QString m_calendar;
    /// "<feed UUID>|", and behind it what the last key had.
    QByteArray m_key;
    qsizetype m_prefixSize;
    QSet<QString> m_seen;
    QList<ScheduleItem> m_schedules;
};

/// The schedules of the events, see FeedSchedules.
[[nodiscard]] QList<ScheduleItem> feedSchedules(const QList<ParsedEvent> &events, const QUuid &feedID);

/// Whether the schedule came back without the feed and still names one of its events.
[[nodiscard]] bool isDetachedFrom(const ScheduleItem &item, const QUuid &feedID);

/// The schedules of a feed after a refresh: those of feedSchedules(). One whose key a schedule of the feed in
/// `schedules` has, or else one detached from it, continues that schedule, which keeps everything but title, start and
/// end. Of several with one key the first counts.
[[nodiscard]] QList<ScheduleItem> mergeFeed(QList<ScheduleItem> fresh, const QUuid &feedID,
                                            const QList<ScheduleItem> &schedules);

/// Whether the schedules of the feed are those of `merged` already, in their order.
[[nodiscard]] bool areFeedSchedules(const QList<ScheduleItem> &merged, const QUuid &feedID,
                                    const QList<ScheduleItem> &schedules);

} // namespace tessaly

#pragma once

#include "model/ICalendarReader.h"
#include "model/ScheduleItem.h"

#include <QList>
#include <QUuid>

namespace tessaly {

/// The schedules that the events of a feed become, in the order of the events. Of several events with one key the first
/// counts.
[[nodiscard]] QList<ScheduleItem> feedSchedules(const QList<ParsedEvent> &events, const QUuid &feedID);

/// The schedules of a feed after a refresh: those of feedSchedules(). One whose key a schedule of the feed in
/// `schedules` has continues that schedule, which keeps everything but title, start and end. Of several with one key
/// the first counts.
[[nodiscard]] QList<ScheduleItem> mergeFeed(QList<ScheduleItem> fresh, const QUuid &feedID,
                                            const QList<ScheduleItem> &schedules);

/// Whether the schedules of the feed are those of `merged` already, in their order.
[[nodiscard]] bool areFeedSchedules(const QList<ScheduleItem> &merged, const QUuid &feedID,
                                    const QList<ScheduleItem> &schedules);

} // namespace tessaly

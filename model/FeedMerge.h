#pragma once

#include "model/ICalendarReader.h"
#include "model/ScheduleItem.h"

#include <QList>
#include <QUuid>

namespace tessaly {

/// "<feed UUID>|<uid>|<start in seconds since 1970>": finds the schedule that an event of a feed became. The seconds
/// are written as a decimal number with at least one digit after the point ("1725235200.0").
[[nodiscard]] QString feedEventKey(const QUuid &feedID, const QString &uid, Instant start);

/// The schedules of a feed after a refresh, in the order of the events. A schedule in `schedules` that belongs to the
/// feed and has the key of an event keeps everything but title, start and end; any other event becomes a new schedule.
/// Of several events, or several schedules, with one key the first counts.
[[nodiscard]] QList<ScheduleItem> mergeFeed(const QList<ParsedEvent> &events, const QUuid &feedID,
                                            const QList<ScheduleItem> &schedules);

} // namespace tessaly

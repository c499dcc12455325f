#pragma once

#include "model/Instant.h"
#include "model/ScheduleItem.h"

#include <QByteArray>
#include <QList>

namespace tessaly {

/// The schedules as one iCalendar object (RFC 5545) that other calendars can import, in stored order. The UID of an
/// event is the schedule's id; times are in UTC, with the fraction of a second dropped; a schedule without an end lasts
/// an hour. Schedules outside of the years 1 to 9999, which the format cannot hold, are left out.
[[nodiscard]] QByteArray calendarText(const QList<ScheduleItem> &schedules, Instant now);

} // namespace tessaly

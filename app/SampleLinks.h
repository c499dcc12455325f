#pragma once

#include "model/AppLanguage.h"
#include "model/CalendarFeed.h"
#include "model/LinkHealth.h"

namespace tessaly {

/// Made-up linked calendars: one that was read this morning, and one that cannot be read since yesterday.
struct SampleLinks
{
    QList<CalendarFeed> feeds = {};
    QList<LinkHealth> health = {};
};
[[nodiscard]] SampleLinks sampleLinks(AppLanguage language, Instant now);

/// A made-up calendar of the autumn of 2026, with events that repeat and some that cannot be read.
[[nodiscard]] QByteArray sampleTimetable(AppLanguage language);

} // namespace tessaly

#pragma once

#include "model/CalendarFeed.h"
#include "model/ICalendarFacts.h"
#include "model/LinkHealth.h"

namespace tessaly {

class PlannerStore;

// What the import sheet says about linked calendars, in the interface language.

/// "Today, 09:10", or the date.
[[nodiscard]] QString linkMomentText(const PlannerStore &store, Instant moment);
/// When the link was last read and what that brought, or since when it fails and why; empty before the first reading.
[[nodiscard]] QString healthText(const PlannerStore &store, const CalendarFeed &feed);
[[nodiscard]] bool isFailing(const PlannerStore &store, const CalendarFeed &feed);
/// "42 events, 6 of them repeat", or "42 events, 6 of them repeat, 156 with repeats" where the calendar is read whole.
[[nodiscard]] QString readText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health);
/// What is behind a link that is being tried.
[[nodiscard]] QString factsText(const PlannerStore &store, const CalendarFacts &facts);
/// What keeping a link up to date, and reading it whole, would do.
[[nodiscard]] QString keepingText(const PlannerStore &store, const LinkHealth &health);
[[nodiscard]] QString repetitionsText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health);
/// Why an event was left out, and in which line that is.
[[nodiscard]] QString skipText(const PlannerStore &store, const SkippedEvent &event);

} // namespace tessaly

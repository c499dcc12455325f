#pragma once

#include "model/AppLanguage.h"
#include "model/SavedData.h"
#include "model/UserCalendar.h"
#include "platform/EventStore.h"

namespace tessaly {

/// A made-up week around `now` with schedules, to-dos and goals, in the words of the language.
[[nodiscard]] SavedData sampleData(AppLanguage language, const UserCalendar &calendar, Instant now);

/// Calendars of made-up accounts.
[[nodiscard]] QList<EventCalendar> sampleCalendars(AppLanguage language);

} // namespace tessaly

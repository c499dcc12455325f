#pragma once

#include "model/AppLanguage.h"
#include "model/SavedData.h"
#include "model/UserCalendar.h"

namespace tessaly {

/// A made-up week around `now` with schedules, to-dos and goals, in the words of the language.
[[nodiscard]] SavedData sampleData(AppLanguage language, const UserCalendar &calendar, Instant now);

} // namespace tessaly

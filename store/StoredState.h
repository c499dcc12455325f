#pragma once

#include "model/Restoration.h"

#include <optional>

namespace tessaly {

class Preferences;

/// The state that a planner over these preferences would begin with; nothing where a part of it cannot be decoded. May
/// run on any thread.
[[nodiscard]] std::optional<PlannerState> storedState(const Preferences &preferences);

/// The settings that belong to the state. Left out is what concerns this machine: the place of documents and window,
/// the login item, the access to calendars, and what the last sync did.
[[nodiscard]] QMap<QString, PreferenceValue> restorableSettings(const Preferences &preferences);

} // namespace tessaly

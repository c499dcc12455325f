#pragma once

#include "model/Generation.h"
#include "model/Result.h"

#include <optional>

namespace tessaly {

enum class StartChoice { Close, OpenEarlier, StartEmpty };

/// Tells in both languages, in a window and on the error output, why the planner cannot start on the data directory,
/// and what can be done. Given an earlier version, offers to open it; where the data are missing, also to start empty.
/// Returns the choice once the window is closed.
[[nodiscard]] StartChoice showStartFailure(const Error &error, const QString &dataDirectory,
                                           const std::optional<Generation> &earlier = {});

} // namespace tessaly

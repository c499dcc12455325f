#pragma once

#include "model/Result.h"

namespace tessaly {

/// Tells in both languages, in a window and on the error output, why the planner cannot start on the data directory,
/// and what can be done. Returns the exit code once the window is closed.
[[nodiscard]] int showStartFailure(const Error &error, const QString &dataDirectory);

} // namespace tessaly

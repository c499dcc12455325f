#pragma once

#include "model/Result.h"

namespace tessaly {

/// Tells in both languages, in a window and on the error output, why the planner cannot start. Returns the exit code
/// once the window is closed.
[[nodiscard]] int showStartFailure(const Error &error);

} // namespace tessaly

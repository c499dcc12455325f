#pragma once

#include <QString>

namespace tessaly {

/// Shows every screen, sheet and dialog in both languages and modes over sample data. Returns the exit code: 1 when
/// anything was complained about on the way, each complaint being on the error output.
[[nodiscard]] int runSelfTest();

/// Writes pictures of every screen, sheet and dialog, both languages, both modes, two window sizes, such as
/// "schedule.en.light.920.png". Data and time are always the same. Returns the exit code.
[[nodiscard]] int takePictures(const QString &directory);

} // namespace tessaly

#pragma once

#include <QString>

namespace tessaly {

[[nodiscard]] QString programVersion();
/// Such as "0.0.1 (20260828)".
[[nodiscard]] QString programVersionAndBuild();

} // namespace tessaly

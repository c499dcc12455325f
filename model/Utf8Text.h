#pragma once

#include <QString>

#include <string_view>

namespace tessaly::codec {

/// The text of valid UTF-8. Takes exactly the memory needed, which QString::fromUtf8 does not for text beyond ASCII.
[[nodiscard]] QString textFromValidUtf8(std::string_view utf8);

} // namespace tessaly::codec

#pragma once

#include <QString>

namespace tessaly {

/// The text as a search compares it: without case, accents, widths, and in simplified characters. Each UTF-16 unit
/// stands for the one at its place. Any thread.
[[nodiscard]] QString searchFolded(QStringView text);

/// The folded text with the first letter of the pinyin in place of each Chinese character; empty where there is none.
[[nodiscard]] QString pinyinInitials(QStringView text);

} // namespace tessaly

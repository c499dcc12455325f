#pragma once

#include <QStringView>

#include <algorithm>

namespace tessaly {

/// Whether `left` comes before `right` in the order of their Unicode code points. QString's own comparison goes by
/// UTF-16 units, which puts emoji before half of the full-width forms.
[[nodiscard]] inline bool precedesByCodePoint(QStringView left, QStringView right)
{
    const auto rank = [](QChar unit) { return unit.isSurrogate() ? 0x10000 + unit.unicode() : unit.unicode(); };
    return std::ranges::lexicographical_compare(left, right, {}, rank, rank);
}

} // namespace tessaly

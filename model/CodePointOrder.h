#pragma once

#include <QList>
#include <QStringView>

namespace tessaly {

/// Whether `left` comes before `right` in the order of their Unicode code points. QString's own comparison goes by
/// UTF-16 units, which puts emoji before half of the full-width forms.
[[nodiscard]] inline bool precedesByCodePoint(QStringView left, QStringView right)
{
    return left.toUcs4() < right.toUcs4();
}

} // namespace tessaly

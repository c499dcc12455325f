#pragma once

#include <QList>
#include <QString>

namespace tessaly {

/// A line of the comparison of two texts.
struct ComparedLine
{
    enum class Kind { Same, Removed, Added };

    Kind kind = Kind::Same;
    QString text = {};

    bool operator==(const ComparedLine &) const = default;
};

/// The lines of both texts, so that those without the added ones are the first text and those without the removed ones
/// the second. As few lines as possible are removed and added, up to `mostSteps` of them; texts that differ in more are
/// compared only at both ends. Of each place, removed lines come first. Line ends are LF.
[[nodiscard]] QList<ComparedLine> compareLines(const QString &before, const QString &after, qsizetype mostSteps = 1000);

} // namespace tessaly

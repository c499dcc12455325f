#pragma once

#include <QtGlobal>

namespace tessaly::bench {

/// What the kernel counts of a process, all its threads together.
struct ProcessFigures
{
    double cpuSeconds = 0;
    /// Bytes: the most that was resident at once, what is now, and that with what several processes share divided
    /// among them.
    double peakBytes = 0;
    double residentBytes = 0;
    double proportionalBytes = 0;
};

/// All zero where there is no such process.
[[nodiscard]] ProcessFigures figuresOf(qint64 process);

} // namespace tessaly::bench

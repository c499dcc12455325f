#pragma once

#include <QtGlobal>

#include <atomic>

namespace tessaly {

/// What the thread that works in a folder and others tell each other. From any thread.
struct FolderWork
{
    /// Long work ends when it is set.
    std::atomic_bool isEnding = false;
    /// Files looked at so far, when all are compared with the mirror.
    std::atomic<qsizetype> eventsRead = 0;
};

} // namespace tessaly

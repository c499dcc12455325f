#pragma once

#include "model/Generation.h"
#include "model/Result.h"

#include <QList>

#include <functional>

namespace tessaly {

class Preferences;

/// Keeps generations of the preferences database beside it. What takes long is done elsewhere, one request after the
/// other; completions run on the main thread, in the order of the requests, and not after the object is gone.
/// Main thread only.
class Backups
{
public:
    using KeepCompletion = std::function<void(const Result<Generation> &)>;
    using ReadCompletion = std::function<void(const Result<void> &)>;

    virtual ~Backups() = default;

    /// Keeps the state of this moment, whatever is written afterwards. Its digest and size are filled in. The new file
    /// is checked and on the disk when it gets its name. A state kept hourly that does not differ from the newest
    /// generation is not kept again: the newest is the result.
    virtual void keep(const Generation &generation, KeepCompletion completion) = 0;
    /// All that are there, the newest first. They may be damaged, which read() notices.
    [[nodiscard]] virtual QList<Generation> list() const = 0;
    virtual void remove(const QList<Generation> &generations) = 0;
    /// Reads a generation as it was written: `read` runs on another thread with its values, which are gone when it
    /// returns. Fails with StorageCorrupt where so much as a bit has changed, and then `read` does not run.
    virtual void read(const Generation &generation, std::function<void(const Preferences &)> read,
                      ReadCompletion completion) = 0;
    /// Checks the whole database as it is now. Fails with StorageCorrupt where so much as a bit has changed.
    virtual void checkPresent(ReadCompletion completion) = 0;
};

} // namespace tessaly

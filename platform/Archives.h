#pragma once

#include "model/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace tessaly {

/// One file of an archive: bytes, or the contents of another file.
struct ArchiveEntry
{
    /// Path within the archive, with "/" between its parts.
    QString name = {};
    QByteArray bytes = {};
    /// Absolute; empty where `bytes` are the contents.
    QString file = {};
};

/// Archives of files (ZIP, ISO/IEC 21320-1). The work runs in the background; completions run later, on the main
/// thread, and not at all once the object is gone. Paths are absolute.
class Archives
{
public:
    virtual ~Archives() = default;

    using Completion = std::function<void(const Result<void> &)>;

    /// Replaces the file at `path` in one step; on failure, the former file stands and nothing else is left.
    virtual void write(const QString &path, const QList<ArchiveEntry> &entries, Completion completion) = 0;
    /// Unpacks the archive into `folder`, which is made for it. Fails where the checksum of an entry is wrong, or its
    /// name leads out of the folder: the `detail` of the error names the entry. On failure, the folder is removed
    /// again.
    virtual void extract(const QString &path, const QString &folder, Completion completion) = 0;
};

} // namespace tessaly

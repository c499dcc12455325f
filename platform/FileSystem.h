#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tessaly {

/// The files of the user. Paths are absolute. What changes nothing may be called in any thread.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    [[nodiscard]] virtual bool exists(const QString &path) const = 0;
    /// Nothing when the file cannot be read whole.
    [[nodiscard]] virtual std::optional<QByteArray> read(const QString &path) const = 0;
    /// Differs, as a rule, once the file has changed; empty for a file that cannot be read.
    [[nodiscard]] virtual QByteArray stamp(const QString &path) const = 0;
    /// Names of the files in a folder, in order; none when it cannot be listed.
    [[nodiscard]] virtual QStringList fileNames(const QString &folder) const = 0;
    /// Paths, relative to the folder, of the files in it and in the folders beneath it; links to folders are left out.
    [[nodiscard]] virtual QStringList filesBeneath(const QString &folder) const = 0;
    /// Whether there is such a folder, and files in it can be found.
    [[nodiscard]] virtual bool canOpen(const QString &folder) const = 0;
    /// Whether files can be made in a folder that is there.
    [[nodiscard]] virtual bool canWriteIn(const QString &folder) const = 0;
    /// The path without links in the part of it that exists.
    [[nodiscard]] virtual QString realPath(const QString &path) const = 0;

    /// Also makes the folders above it. True when the folder exists afterwards.
    virtual bool makeFolder(const QString &folder) = 0;
    /// Replaces the file in one step; the bytes are on the disk when it returns. On failure the former file stands.
    virtual bool write(const QString &path, const QByteArray &bytes) = 0;
    /// Never replaces `to`.
    virtual bool copy(const QString &from, const QString &to) = 0;
    /// Never replaces `to`; works across devices, where `from` stays until the copy is complete.
    virtual bool move(const QString &from, const QString &to) = 0;
    virtual bool remove(const QString &path) = 0;
    /// Removes the folder with everything in it.
    virtual bool removeFolder(const QString &folder) = 0;
};

} // namespace tessaly

#pragma once

#include "platform/FileSystem.h"

#include <functional>

namespace tessaly {

/// Replaces the file in one step; the bytes are on the disk when it returns. On failure the former file stands, no part
/// of the new one is left. The only way in which the program writes a file. `isWanted` is asked when all is ready for
/// the step; on false nothing happens. Where the program is killed at the last moment, the new file stays under a name
/// of Qt's choice, or as `draftName` in the same folder.
[[nodiscard]] bool replaceFile(const QString &path, const QByteArray &bytes, const std::function<bool()> &isWanted = {},
                               const QString &draftName = {});
/// Makes the folder, and those above it, open to the owner alone; one that exists is left as it is. True when it
/// exists afterwards.
[[nodiscard]] bool makePrivateFolder(const QString &path);
/// Brings the names in the folder to the disk: a file that took another's place is there after a power cut only then.
void flushFolder(const QString &path);
/// Whether not even a byte can be written in the folder, or where it would be made, for want of space.
[[nodiscard]] bool isDiskFull(const QString &folder);

/// The file system of the machine.
class LocalFileSystem final : public FileSystem
{
public:
    [[nodiscard]] bool exists(const QString &path) const override;
    [[nodiscard]] std::optional<QByteArray> read(const QString &path) const override;
    [[nodiscard]] QByteArray stamp(const QString &path) const override;
    [[nodiscard]] QStringList fileNames(const QString &folder) const override;
    [[nodiscard]] QStringList filesBeneath(const QString &folder) const override;
    [[nodiscard]] bool canOpen(const QString &folder) const override;
    [[nodiscard]] bool canWriteIn(const QString &folder) const override;
    [[nodiscard]] QString realPath(const QString &path) const override;
    bool makeFolder(const QString &folder) override;
    bool write(const QString &path, const QByteArray &bytes) override;
    bool copy(const QString &from, const QString &to) override;
    bool move(const QString &from, const QString &to) override;
    bool remove(const QString &path) override;
    bool removeFolder(const QString &folder) override;
};

} // namespace tessaly

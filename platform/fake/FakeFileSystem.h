#pragma once

#include "platform/FileSystem.h"

#include <QMap>

#include <mutex>

namespace tessaly {

/// Files in memory. Every folder exists. What changes files can be made to fail.
class FakeFileSystem final : public FileSystem
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

    /// Paths of all files, in order.
    [[nodiscard]] QStringList paths() const { return m_files.keys(); }
    /// While true, nothing can be changed.
    void setReadOnly(bool isReadOnly) { m_isReadOnly = isReadOnly; }

    /// What has the path, or is in the folder of that path, is there but cannot be read.
    void setUnreadable(const QString &path) { m_unreadable = path; }

    /// The next so many writes fail.
    void failNextWrites(int count) { m_failingWrites = count; }

private:
    [[nodiscard]] bool canRead(const QString &path) const;

    /// Files are also read in other threads.
    mutable std::recursive_mutex m_mutex;
    QMap<QString, QByteArray> m_files;
    bool m_isReadOnly = false;
    QString m_unreadable;
    int m_failingWrites = 0;
};

} // namespace tessaly

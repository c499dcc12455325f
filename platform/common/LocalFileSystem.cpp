#include "platform/common/LocalFileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tessaly {

bool LocalFileSystem::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

std::optional<QByteArray> LocalFileSystem::read(const QString &path) const
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

QStringList LocalFileSystem::fileNames(const QString &folder) const
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

bool LocalFileSystem::makeFolder(const QString &folder)
{
    return QDir().mkpath(folder);
}

bool LocalFileSystem::write(const QString &path, const QByteArray &bytes)
{
    // QSaveFile flushes the new file to the disk before it takes the old one's place.
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

bool LocalFileSystem::copy(const QString &from, const QString &to)
{
    return QFile::copy(from, to);
}

bool LocalFileSystem::move(const QString &from, const QString &to)
{
    // QFile::rename would copy across devices in place, where a crash leaves half a file under the final name.
    if (exists(to))
        return false;
    if (QDir().rename(from, to))
        return true;
    const std::optional<QByteArray> bytes = read(from);
    return bytes && write(to, *bytes) && QFile::remove(from);
}

bool LocalFileSystem::remove(const QString &path)
{
    return QFile::remove(path);
}

} // namespace tessaly

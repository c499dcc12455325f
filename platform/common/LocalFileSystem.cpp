#include "platform/common/LocalFileSystem.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <filesystem>
#include <system_error>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace tessaly {

namespace {

/// False when the bytes handed over found no room. Not every file system knows that before; some cannot say at all.
bool flushFile(QSaveFile &file)
{
    if (!file.flush())
        return false;
    return ::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

bool replaceFile(const QString &path, const QByteArray &bytes, const std::function<bool()> &isWanted,
                 const QString &draftName)
{
    const QFileInfo former(path);
    const QString target = former.isSymLink() && former.exists() ? former.canonicalFilePath() : path;
    const QString folder = QFileInfo(target).path();
    const QString draft = draftName.isEmpty() ? target : folder + u'/' + draftName;
    QSaveFile file(draft);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (former.exists())
        file.setPermissions(former.permissions());
    // A commit does not notice that the rest of the buffer found no room.
    if (file.write(bytes) != bytes.size() || !flushFile(file) || (isWanted && !isWanted()) || !file.commit())
        return false;
    if (draft != target && ::rename(QFile::encodeName(draft).constData(), QFile::encodeName(target).constData()) != 0) {
        QFile::remove(draft);
        return false;
    }
    flushFolder(folder);
    return true;
}

bool makePrivateFolder(const QString &path)
{
    const QFileInfo folder(path);
    return folder.isDir() || (makePrivateFolder(folder.path()) &&
                              QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void flushFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

bool isDiskFull(const QString &folder)
{
    QFileInfo nearest(folder);
    while (!nearest.isDir() && nearest.path() != nearest.filePath())
        nearest.setFile(nearest.path());
    QByteArray path = QFile::encodeName(nearest.filePath()) + "/room-XXXXXX";
    const auto isSpaceLacking = [] { return errno == ENOSPC || errno == EDQUOT; };
    const int file = ::mkstemp(path.data());
    if (file < 0)
        return isSpaceLacking();
    const char byte = 0;
    const bool isFull = ::write(file, &byte, 1) < 0 && isSpaceLacking();
    ::close(file);
    ::unlink(path.constData());
    return isFull;
}

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

QByteArray LocalFileSystem::stamp(const QString &path) const
{
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    return QByteArray::number(file.lastModified().toMSecsSinceEpoch()) + ' ' + QByteArray::number(file.size());
}

QStringList LocalFileSystem::fileNames(const QString &folder) const
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QStringList LocalFileSystem::filesBeneath(const QString &folder) const
{
    const QDir root(folder);
    QStringList paths;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); it.hasNext();)
        paths.append(root.relativeFilePath(it.next()));
    return paths;
}

bool LocalFileSystem::canOpen(const QString &folder) const
{
    // The right to execute a folder is that of finding what is in it.
    const QFileInfo info(folder);
    return info.isDir() && info.isReadable() && info.isExecutable();
}

bool LocalFileSystem::canWriteIn(const QString &folder) const
{
    // Permissions alone do not show that a medium is read-only.
    QTemporaryFile probe(folder + QStringLiteral("/.tessaly-XXXXXX"));
    return QFileInfo(folder).isDir() && probe.open();
}

QString LocalFileSystem::realPath(const QString &path) const
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(QFile::encodeName(path).toStdString(), error);
    return QDir::cleanPath(error ? path : QFile::decodeName(real.c_str()));
}

bool LocalFileSystem::makeFolder(const QString &folder)
{
    return QDir().mkpath(folder);
}

bool LocalFileSystem::write(const QString &path, const QByteArray &bytes)
{
    return replaceFile(path, bytes);
}

bool LocalFileSystem::copy(const QString &from, const QString &to)
{
    // QFile::copy may not notice that the last bytes found no room.
    const std::optional<QByteArray> bytes = exists(to) ? std::nullopt : read(from);
    return bytes && write(to, *bytes);
}

bool LocalFileSystem::move(const QString &from, const QString &to)
{
    // Renaming by Qt turns to copying where it must, and on a full disk removes the original of a copy that is not
    // complete. A hard link is made at once or not at all, and never replaces another file.
    std::error_code error;
    std::filesystem::create_hard_link(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString(),
                                      error);
    return (!error || copy(from, to)) && QFile::remove(from);
}

bool LocalFileSystem::remove(const QString &path)
{
    return QFile::remove(path);
}

bool LocalFileSystem::removeFolder(const QString &folder)
{
    // An empty path would be that of the folder in which the program was started.
    return !folder.isEmpty() && QDir(folder).removeRecursively();
}

} // namespace tessaly

#include "platform/fake/FakeFileSystem.h"

#include <QDir>

namespace tessaly {

bool FakeFileSystem::exists(const QString &path) const
{
    const std::scoped_lock lock(m_mutex);
    const auto inside = m_files.lowerBound(path + u'/');
    return m_files.contains(path) || (inside != m_files.cend() && inside.key().startsWith(path + u'/'));
}

std::optional<QByteArray> FakeFileSystem::read(const QString &path) const
{
    const std::scoped_lock lock(m_mutex);
    const auto found = canRead(path) ? m_files.constFind(path) : m_files.cend();
    return found == m_files.cend() ? std::nullopt : std::optional(*found);
}

QByteArray FakeFileSystem::stamp(const QString &path) const
{
    return read(path).value_or(QByteArray());
}

QStringList FakeFileSystem::fileNames(const QString &folder) const
{
    QStringList names = filesBeneath(folder);
    names.removeIf([](const QString &path) { return path.contains(u'/'); });
    return names;
}

QStringList FakeFileSystem::filesBeneath(const QString &folder) const
{
    const std::scoped_lock lock(m_mutex);
    const QString prefix = folder + u'/';
    QStringList paths;
    for (auto it = m_files.lowerBound(prefix); it != m_files.cend() && it.key().startsWith(prefix); ++it)
        paths.append(it.key().mid(prefix.size()));
    return paths;
}

bool FakeFileSystem::canOpen(const QString &folder) const
{
    return canRead(folder);
}

bool FakeFileSystem::canRead(const QString &path) const
{
    return m_unreadable.isEmpty() || !(path + u'/').startsWith(m_unreadable + u'/');
}

bool FakeFileSystem::canWriteIn(const QString &) const
{
    return !m_isReadOnly;
}

QString FakeFileSystem::realPath(const QString &path) const
{
    return QDir::cleanPath(path);
}

bool FakeFileSystem::makeFolder(const QString &)
{
    return !m_isReadOnly;
}

bool FakeFileSystem::write(const QString &path, const QByteArray &bytes)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isReadOnly || m_failingWrites-- > 0)
        return false;
    m_failingWrites = 0;
    m_files.insert(path, bytes);
    return true;
}

bool FakeFileSystem::copy(const QString &from, const QString &to)
{
    const std::optional<QByteArray> bytes = read(from);
    return bytes && !exists(to) && write(to, *bytes);
}

bool FakeFileSystem::move(const QString &from, const QString &to)
{
    const std::scoped_lock lock(m_mutex);
    return copy(from, to) && remove(from);
}

bool FakeFileSystem::remove(const QString &path)
{
    const std::scoped_lock lock(m_mutex);
    return !m_isReadOnly && m_files.remove(path) > 0;
}

bool FakeFileSystem::removeFolder(const QString &folder)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isReadOnly)
        return false;
    m_files.removeIf([start = folder + u'/'](auto file) { return file.key().startsWith(start); });
    return true;
}

} // namespace tessaly

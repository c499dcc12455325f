#include "store/DeletedDocumentFolder.h"

#include "model/Uuid.h"
#include "platform/FileSystem.h"
#include "store/DocumentFolder.h"

#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

DeletedDocumentFolder::DeletedDocumentFolder(FileSystem &files, QString path) : m_files(files), m_path(std::move(path))
{
}

QString DeletedDocumentFolder::textPath(const QUuid &documentID) const
{
    return m_path + u'/' + uuidText(documentID) + u".md"_s;
}

QString DeletedDocumentFolder::picturesPath() const
{
    return m_path + u"/Assets"_s;
}

QStringList DeletedDocumentFolder::pictures(const QUuid &documentID) const
{
    QStringList names = m_files.fileNames(picturesPath());
    names.removeIf([start = uuidText(documentID)](const QString &name) { return !name.startsWith(start); });
    return names;
}

QList<QUuid> DeletedDocumentFolder::documents() const
{
    QList<QUuid> ids;
    for (const QString &name : m_files.fileNames(m_path)) {
        const QUuid id(name.chopped(std::min(name.size(), qsizetype(3))));
        if (!id.isNull() && name == uuidText(id) + u".md"_s)
            ids.append(id);
    }
    return ids;
}

std::optional<QByteArray> DeletedDocumentFolder::read(const QUuid &documentID) const
{
    return m_files.read(textPath(documentID));
}

void DeletedDocumentFolder::move(const QString &from, const QString &to) const
{
    if (m_files.move(from, to))
        return;
    // A crash may have left the file in both places.
    const std::optional<QByteArray> bytes = m_files.read(from);
    if (bytes && m_files.read(to) == bytes)
        m_files.remove(from);
}

void DeletedDocumentFolder::take(DocumentFolder &from, const QUuid &documentID, const QSet<QString> &keptPictures) const
{
    m_files.makeFolder(m_path);
    move(from.documentPath(documentID), textPath(documentID));
    from.forget(documentID);
    for (const QString &name : from.pictures(documentID)) {
        if (keptPictures.contains(name))
            continue;
        m_files.makeFolder(picturesPath());
        move(from.picturesPath() + u'/' + name, picturesPath() + u'/' + name);
    }
}

void DeletedDocumentFolder::giveBack(const DocumentFolder &to, const QUuid &documentID) const
{
    if (m_files.exists(textPath(documentID))) {
        m_files.makeFolder(to.path());
        move(textPath(documentID), to.documentPath(documentID));
    }
    for (const QString &name : pictures(documentID)) {
        m_files.makeFolder(to.picturesPath());
        move(picturesPath() + u'/' + name, to.picturesPath() + u'/' + name);
    }
}

void DeletedDocumentFolder::destroy(const QUuid &documentID) const
{
    m_files.remove(textPath(documentID));
    for (const QString &name : pictures(documentID))
        m_files.remove(picturesPath() + u'/' + name);
}

} // namespace tessaly

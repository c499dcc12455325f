#include "store/DocumentFolder.h"

#include "model/PictureAddress.h"
#include "model/Uuid.h"
#include "platform/FileSystem.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QByteArray digest(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QString assetsFolder(const QString &path)
{
    return path + u"/Assets"_s;
}

/// What follows the id in the name of a version that another program has written.
const QString foreignVersionMark = u" (changed elsewhere"_s;

} // namespace

DocumentFolder::DocumentFolder(FileSystem &files, QString path) : m_files(files), m_path(std::move(path))
{
}

QString DocumentFolder::documentPath(const QUuid &documentID) const
{
    return m_path + u'/' + uuidText(documentID) + u".md"_s;
}

DocumentText DocumentFolder::read(const QUuid &documentID)
{
    const QString path = documentPath(documentID);
    const std::optional<QByteArray> bytes = m_files.read(path);
    if (!bytes) {
        m_knownDigests.remove(documentID);
        const bool isMissing = m_files.canOpen(m_path) && !m_files.exists(path);
        return {.state = isMissing ? DocumentText::State::Missing : DocumentText::State::Unreadable};
    }
    // Stateless: what is cut short at the end is an error, too.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    QString text = decoder(*bytes);
    if (decoder.hasError()) {
        // Text that cannot be shown was not seen by the user: saving must keep it.
        m_knownDigests.remove(documentID);
        return {.state = DocumentText::State::Unreadable};
    }
    m_knownDigests.insert(documentID, digest(*bytes));
    return {.state = DocumentText::State::Read, .text = std::move(text)};
}

bool DocumentFolder::takeFile(const QString &source, const QString &name)
{
    const QString target = m_path + u'/' + name;
    std::optional<QByteArray> bytes = m_files.read(source);
    if (!bytes)
        return false;
    if (!name.contains(u'/')) {
        // The text comes from another folder, and its pictures come along.
        const QString sources = assetsFolder(QFileInfo(source).path());
        bytes = withPicturesIn(*bytes, QUrl::toPercentEncoding(picturesPath(), "/"), [&](QByteArrayView picture) {
            const QString file = u'/' + QUrl::fromPercentEncoding(picture.toByteArray());
            return m_files.exists(sources + file) || m_files.exists(picturesPath() + file);
        });
    }
    if (m_files.read(target) == bytes)
        return true;
    m_files.makeFolder(QFileInfo(target).path());
    return m_files.write(target, *bytes);
}

bool DocumentFolder::canWrite() const
{
    return m_files.canWriteIn(m_path);
}

DocumentWrite DocumentFolder::write(const QUuid &documentID, const QString &text)
{
    m_files.makeFolder(m_path);
    const QByteArray bytes = text.toUtf8();
    std::optional<QString> kept = keepForeignVersion(documentID, bytes);
    if (!kept)
        return {};
    // A text that cannot be written may stand there already.
    if (!m_files.write(documentPath(documentID), bytes) && m_files.read(documentPath(documentID)) != bytes) {
        // The other version stands where it stood; each further try would leave one more copy.
        if (!kept->isEmpty())
            m_files.remove(m_path + u'/' + *kept);
        return {};
    }
    m_knownDigests.insert(documentID, digest(bytes));
    return {true, *std::move(kept)};
}

std::optional<QString> DocumentFolder::keepForeignVersion(const QUuid &documentID, const QByteArray &ours)
{
    const std::optional<QByteArray> onDisk = m_files.read(documentPath(documentID));
    if (!onDisk)
        return m_files.exists(documentPath(documentID)) ? std::nullopt : std::optional(QString());
    if (*onDisk == ours || m_knownDigests.value(documentID) == digest(*onDisk))
        return QString();
    const QString start = uuidText(documentID) + foreignVersionMark;
    QString name = start + u").md"_s;
    for (int number = 2; m_files.exists(m_path + u'/' + name); ++number)
        name = start + u' ' + QString::number(number) + u").md"_s;
    return m_files.write(m_path + u'/' + name, *onDisk) ? std::optional(name) : std::nullopt;
}

void DocumentFolder::remove(const QUuid &documentID)
{
    m_files.remove(documentPath(documentID));
    forget(documentID);
}

QString DocumentFolder::picturesPath() const
{
    return assetsFolder(m_path);
}

QStringList DocumentFolder::pictures(const QUuid &documentID) const
{
    QStringList names = m_files.fileNames(picturesPath());
    names.removeIf([start = uuidText(documentID)](const QString &name) { return !name.startsWith(start); });
    return names;
}

std::optional<QString> DocumentFolder::importImage(const QUuid &documentID, const QUrl &source)
{
    const QString suffix = QFileInfo(source.toLocalFile()).suffix();
    const QString folder = assetsFolder(m_path);
    m_files.makeFolder(folder);
    const QString target = folder + u'/' + uuidText(documentID) + u'-' + uuidText(QUuid::createUuid()) + u'.' +
                           (suffix.isEmpty() ? u"png"_s : suffix);
    if (!m_files.copy(source.toLocalFile(), target))
        return std::nullopt;
    const QByteArray encoded = QUrl::toPercentEncoding(target, "/");
    return u"file://"_s + QString::fromLatin1(encoded);
}

DocumentsMove DocumentFolder::moveTo(const QString &newPath, const QList<MarkdownDocument> &documents)
{
    if (QDir::cleanPath(m_path) == QDir::cleanPath(newPath)) {
        m_files.makeFolder(newPath);
        return DocumentsMove::Done;
    }
    const QString oldAssets = assetsFolder(m_path);
    if ((m_files.realPath(newPath) + u'/').startsWith(m_files.realPath(oldAssets) + u'/'))
        return DocumentsMove::RefusedWithinAssets;
    if (!m_files.makeFolder(newPath) || !m_files.canOpen(newPath) || !m_files.canWriteIn(newPath))
        return DocumentsMove::RefusedUnusable;
    bool isComplete = documents.isEmpty() || m_files.canOpen(m_path);
    // Listed before anything moves, so that nothing is found that has just come.
    const QStringList foreignVersions = m_files.fileNames(m_path).filter(foreignVersionMark);
    const QStringList pictures = m_files.filesBeneath(oldAssets);
    const QString oldPath = std::exchange(m_path, newPath);
    const auto moveUnlessThere = [this, &isComplete](const QString &from, const QString &to) {
        if (m_files.exists(from) && !m_files.exists(to))
            isComplete = m_files.move(from, to) && isComplete;
    };
    for (const MarkdownDocument &document : documents) {
        const QString name = u'/' + uuidText(document.id) + u".md"_s;
        moveUnlessThere(oldPath + name, newPath + name);
        for (const QString &version : foreignVersions) {
            if (version.startsWith(uuidText(document.id)))
                moveUnlessThere(oldPath + u'/' + version, newPath + u'/' + version);
        }
    }
    for (const QString &picture : pictures) {
        const QString target = assetsFolder(newPath) + u'/' + picture;
        m_files.makeFolder(QFileInfo(target).path());
        moveUnlessThere(oldAssets + u'/' + picture, target);
    }
    return isComplete ? DocumentsMove::Done : DocumentsMove::Incomplete;
}

} // namespace tessaly

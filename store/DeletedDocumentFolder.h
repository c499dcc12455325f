#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

class DocumentFolder;
class FileSystem;

/// The files of deleted documents, which can be restored: texts, and beneath `Assets` pictures, named as in the folder
/// they came from. Nothing is ever replaced: what cannot be moved stays where it is.
class DeletedDocumentFolder
{
public:
    /// The file system must outlive it.
    DeletedDocumentFolder(FileSystem &files, QString path);

    /// The documents whose texts are here.
    [[nodiscard]] QList<QUuid> documents() const;
    [[nodiscard]] std::optional<QByteArray> read(const QUuid &documentID) const;

    /// Moves the text here, with its pictures but those named.
    void take(DocumentFolder &from, const QUuid &documentID, const QSet<QString> &keptPictures) const;
    /// Moves text and pictures back.
    void giveBack(const DocumentFolder &to, const QUuid &documentID) const;
    /// Removes text and pictures for good.
    void destroy(const QUuid &documentID) const;

private:
    void move(const QString &from, const QString &to) const;
    [[nodiscard]] QString textPath(const QUuid &documentID) const;
    [[nodiscard]] QString picturesPath() const;
    [[nodiscard]] QStringList pictures(const QUuid &documentID) const;

    FileSystem &m_files;
    QString m_path;
};

} // namespace tessaly

#pragma once

#include "model/Instant.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

class FileSystem;

/// The former texts of the documents, compressed, in a folder for each document. Failures of the file system have no
/// effect beyond the step that failed.
class DocumentVersions
{
public:
    /// So many of each document are kept.
    static constexpr qsizetype kept = 50;

    /// `folder` is absolute. It is made when it is first needed.
    DocumentVersions(FileSystem &files, QString folder) : m_files(files), m_folder(std::move(folder)) {}

    /// Keeps the text that the document has had since the moment; beyond the last fifty, the oldest go.
    void keep(const QUuid &documentID, Instant moment, const QByteArray &text);
    /// Since when the document had each text, the newest first.
    [[nodiscard]] QList<Instant> list(const QUuid &documentID) const;
    /// Nothing when there is none of the moment, or it cannot be read or is not UTF-8. Lines end in LF.
    [[nodiscard]] std::optional<QString> text(const QUuid &documentID, Instant moment) const;
    /// Removes all of the document.
    void drop(const QUuid &documentID);

private:
    [[nodiscard]] QString folderOf(const QUuid &documentID) const;

    FileSystem &m_files;
    QString m_folder;
};

} // namespace tessaly

#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

class FileSystem;

/// Unsaved text and details of a document.
struct DocumentDraft
{
    QString title;
    std::optional<QUuid> categoryID;
    QString content;
    /// The version of the document's file that the text was made from, see DocumentFolder::knownVersion().
    QByteArray version = {};

    bool operator==(const DocumentDraft &) const = default;
};

/// Drafts of documents, one file each ("<ID>.json") in a separate folder. They restore what was typed should the
/// program or the machine crash before it is saved.
class DocumentDrafts
{
public:
    /// `path` is absolute. The folder is made when it is first needed.
    DocumentDrafts(FileSystem &files, QString path);

    /// Nothing when there is none, or it cannot be read.
    [[nodiscard]] std::optional<DocumentDraft> draft(const QUuid &documentID) const;
    /// Replaces the former draft. True when it is on the disk.
    bool keep(const QUuid &documentID, const DocumentDraft &draft);
    void drop(const QUuid &documentID);

private:
    [[nodiscard]] QString filePath(const QUuid &documentID) const;

    FileSystem &m_files;
    QString m_path;
};

} // namespace tessaly

#pragma once

#include "model/MarkdownDocument.h"

#include <QHash>
#include <QString>
#include <QUrl>

#include <optional>

namespace tessaly {

class FileSystem;

/// What was read of a document.
struct DocumentText
{
    enum class State {
        Read,
        Missing,    ///< the folder has no such file
        Unreadable, ///< the folder cannot be opened, or the file cannot be read or is not UTF-8
    };

    State state = State::Missing;
    /// Empty unless it was read.
    QString text = {};
};

/// How a document was written.
struct DocumentWrite
{
    /// Whether the text is on the disk.
    bool isWritten = false;
    /// Name of the file that now holds the version of another program; empty when there was none.
    QString keptVersion = {};

    explicit operator bool() const { return isWritten; }
};

/// The result of moving the documents to another folder. What is refused changes nothing.
enum class DocumentsMove {
    Done,
    Incomplete, ///< some files could not be moved, or not be found
    RefusedWithinAssets,
    RefusedUnusable, ///< the folder cannot be made, read or written
};

/// The files of the document library in one folder: "<ID>.md" for each document, and their pictures in "Assets".
/// Failures of the file system have no effect beyond the step that failed.
class DocumentFolder
{
public:
    /// `path` is absolute. The folder is made when it is first needed.
    DocumentFolder(FileSystem &files, QString path);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] QString documentPath(const QUuid &documentID) const;

    /// Remembers what it reads as the version known here.
    [[nodiscard]] DocumentText read(const QUuid &documentID);
    /// Puts a copy of the file in place of the one of that name, a path within the folder; a text names the pictures
    /// that lie beside it where they are here. True when it is on the disk.
    bool takeFile(const QString &source, const QString &name);
    /// Whether a document can be written at all.
    [[nodiscard]] bool canWrite() const;
    /// Names the version of the file that was last read or written here; empty when there was none.
    [[nodiscard]] QByteArray knownVersion(const QUuid &documentID) const { return m_knownDigests.value(documentID); }
    /// Sets the version that counts as last read; any other belongs to another program.
    void setKnownVersion(const QUuid &documentID, const QByteArray &version)
    {
        m_knownDigests.insert(documentID, version);
    }
    /// Writes the text at once and durably. First copies a version that another program has written since the last
    /// read() or write() to "<ID> (changed elsewhere).md" or a name with a number. If either fails, the former file
    /// stays.
    DocumentWrite write(const QUuid &documentID, const QString &text);
    void remove(const QUuid &documentID);
    /// Its file has gone, or changed hands.
    void forget(const QUuid &documentID) { m_knownDigests.remove(documentID); }

    [[nodiscard]] QString picturesPath() const;
    /// File names of the pictures that were imported into the document.
    [[nodiscard]] QStringList pictures(const QUuid &documentID) const;

    /// Copies the picture into "Assets" under a new name; the copy's URL, percent-encoded for a Markdown link, or
    /// nothing when copying failed.
    [[nodiscard]] std::optional<QString> importImage(const QUuid &documentID, const QUrl &source);

    /// Moves the documents' files, versions from elsewhere included, and the pictures, those in folders beneath
    /// "Assets" too, to another folder. What exists there is never overwritten, what cannot be moved stays. A folder
    /// within "Assets" is refused: the documents would be pictures to be moved, too.
    DocumentsMove moveTo(const QString &newPath, const QList<MarkdownDocument> &documents);

private:
    /// The name of the copy, empty when none was needed; nothing when the file must not be overwritten.
    [[nodiscard]] std::optional<QString> keepForeignVersion(const QUuid &documentID, const QByteArray &ours);

    FileSystem &m_files;
    QString m_path;
    QHash<QUuid, QByteArray> m_knownDigests;
};

} // namespace tessaly

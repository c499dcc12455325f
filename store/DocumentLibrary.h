#pragma once

#include "model/RowsChange.h"
#include "model/SavedData.h"
#include "model/StateChange.h"
#include "store/DeletedDocumentFolder.h"
#include "store/DocumentDrafts.h"
#include "store/DocumentFolder.h"
#include "store/DocumentVersions.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessaly {

class FileSystem;
class StoredValues;
struct PlannerPorts;

/// The part of the planner store that owns the documents: the list of categories and documents, saved at each change,
/// and the text of each document in a file. Failures of the file system are not reported, the step merely has no
/// effect; saveDocument() returns whether it had one. Categories and documents are found by their id; an unknown id
/// changes no list.
class DocumentLibrary : public QObject
{
    Q_OBJECT

public:
    /// Performs a change as one step, see PlannerStore::perform().
    using Perform = std::function<void(const StateChange &)>;

    /// Holds nothing before load(). The ports and values must outlive it.
    DocumentLibrary(const PlannerPorts &ports, StoredValues &values, Perform perform, QObject *parent = nullptr);

    /// Reads the lists and the place of the files; writes nothing.
    void load();
    /// Brings the files to where the lists say they are, should a crash or a failure have left them elsewhere, and
    /// destroys what was deleted too long ago. To be called once.
    void start();

    // In the order in which they were added. Never keep a copy of a list: it would make the next change copy it.
    [[nodiscard]] const QList<MarkdownCategory> &documentCategories() const { return m_library.categories; }
    [[nodiscard]] const QList<MarkdownDocument> &documents() const { return m_library.documents; }

    /// Those that can be restored, in the order in which they were deleted.
    [[nodiscard]] QList<DeletedDocument> deletedDocuments() const
    {
        return m_library.deleted.value_or(QList<DeletedDocument>());
    }
    /// The days that are left until the document is destroyed.
    [[nodiscard]] int daysLeft(const DeletedDocument &document) const;

    /// Absolute path of the folder that holds the files.
    [[nodiscard]] const QString &documentSaveLocation() const { return m_folder.path(); }
    /// Moves the files and the pictures to another folder and remembers it. A file that already exists there takes
    /// precedence over the one that would have been moved; what cannot be moved stays. Links to pictures are not
    /// rewritten. A folder that cannot be used, is not local or lies within that of the pictures is refused.
    DocumentsMove setDocumentSaveLocation(const QUrl &folder);

    /// Appends a category; a blank name is ignored.
    void addDocumentCategory(const QString &name);
    /// Takes the name as it is typed, blank or not.
    void renameDocumentCategory(const QUuid &id, const QString &name);
    /// Its documents stay, without a category.
    void deleteDocumentCategory(const QUuid &id);

    /// Appends a document whose text is its title as a heading. A blank title adds nothing.
    std::optional<MarkdownDocument> addDocument(const QString &title, const std::optional<QUuid> &categoryID);
    /// Adds a copy of each "*.md" file that is UTF-8 text, titled after the file; other files are passed over. Returns
    /// the last one added.
    std::optional<MarkdownDocument> importMarkdownFiles(const QList<QUrl> &files,
                                                        const std::optional<QUuid> &categoryID);

    /// The text, empty when the file is missing, cannot be read or is not UTF-8.
    [[nodiscard]] DocumentText readDocument(const MarkdownDocument &document);
    /// Whether documents can be saved where they are kept.
    [[nodiscard]] bool canSaveDocuments() const { return m_folder.canWrite(); }
    [[nodiscard]] QString documentPath(const MarkdownDocument &document) const
    {
        return m_folder.documentPath(document.id);
    }
    /// For those who only read the documents' files.
    [[nodiscard]] const FileSystem &files() const;
    /// The former texts of the documents.
    [[nodiscard]] const DocumentVersions &versions() const { return m_versions; }
    /// Keeps the former text as a version, writes the text and sets the time of the last change. On failure the former
    /// text stays on the disk.
    [[nodiscard]] DocumentWrite saveDocument(const MarkdownDocument &document, const QString &content);
    /// Keeps the draft until the document is saved or deleted, and fills in its `version`. True when it is on the disk.
    bool keepDraft(const MarkdownDocument &document, DocumentDraft draft);
    /// The draft of a document; nothing when it equals the document. Saving after this keeps what another program has
    /// written since the draft was begun. To be called after the document was read.
    [[nodiscard]] std::optional<DocumentDraft> takeUpDraft(const MarkdownDocument &document, const QString &content);
    /// A blank title is ignored.
    void renameDocument(const MarkdownDocument &document, const QString &title);
    void setDocumentCategory(const MarkdownDocument &document, const std::optional<QUuid> &categoryID);
    /// Copies the picture beside the documents; the URL of the copy, or nothing when it could not be copied.
    [[nodiscard]] std::optional<QString> importImage(const MarkdownDocument &document, const QUrl &source);
    /// Puts a copy of the file in place of the one of that name, a path within the documents' folder. True when it is
    /// on the disk.
    bool takeFile(const QString &source, const QString &name) { return m_folder.takeFile(source, name); }
    /// Keeps the text that takeFile() would replace as a version of its document.
    void keepReplaced(const QString &source, const QString &name);
    /// Lists the documents that the change removes as deleted, so that each can be restored by itself.
    void listRemoved(StateChange &change) const;
    /// Moves the document, its file and its pictures to the deleted ones. Pictures that another document names stay.
    void deleteDocument(const MarkdownDocument &document);
    /// Moves a deleted document back.
    void restoreDocument(const QUuid &id);
    /// Removes a deleted document for good. This is no step and cannot be undone.
    void destroyDocument(const QUuid &id) { destroyDocuments({id}); }
    void destroyDeletedDocuments();
    /// Removes those that were deleted too long ago.
    void destroyExpired();

    /// The rows that a change touched.
    struct Touched
    {
        std::optional<RowsChange> categories = {};
        std::optional<RowsChange> documents = {};
        bool areDeletedTouched = false;
    };
    /// Applies what the change says of categories and documents and saves it; adds to `done` what changed.
    [[nodiscard]] Touched apply(const StateChange &change, StateChange &done);
    void announce(const Touched &touched);

signals:
    void documentCategoriesChanged(const tessaly::RowsChange &change);
    void documentsChanged(const tessaly::RowsChange &change);
    void deletedDocumentsChanged();
    void documentSaveLocationChanged();
    /// The document was removed for good.
    void documentDestroyed(const QUuid &id);

private:
    /// Keeps the text of before, unless it is that of now.
    void keepVersion(const QUuid &id, const std::optional<QByteArray> &former);
    void saveDocumentMetadata();
    [[nodiscard]] QList<RecordChange<DeletedDocument>> applyDeleted(QList<RecordChange<DeletedDocument>> changes,
                                                                    const StateChange &done);
    void moveFiles(const StateChange &done);
    /// The pictures of the document that the texts of others name.
    [[nodiscard]] QSet<QString> sharedPictures(const QUuid &id) const;
    void adoptStrays();
    void destroyDocuments(const QList<QUuid> &ids);
    /// Saves the list, which the caller has changed in these rows, and emits its signal.
    void documentsAssigned(const RowsChange &rows);
    /// Sets the time of the last change. No step: the text has an undo of its own.
    void touch(const QUuid &id);
    /// Lets `change` work on the document with the id, as a step; its time of the last change becomes now.
    template <class Change>
    void edit(const QUuid &id, Change change);

    const PlannerPorts &m_ports;
    StoredValues &m_values;
    DocumentFolder m_folder;
    DeletedDocumentFolder m_deletedFolder;
    DocumentDrafts m_drafts;
    DocumentVersions m_versions;
    DocumentLibraryData m_library;
    Perform m_perform;
};

} // namespace tessaly

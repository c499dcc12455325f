#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "store/DocumentLibrary.h"
#include "store/PlannerPorts.h"
#include "store/RecordRows.h"

#include <algorithm>

namespace tessaly {

namespace {

/// The heading that a text begins with, or its first line.
QString titleOf(const QByteArray &text)
{
    QString line = QString::fromUtf8(text.split('\n').constFirst());
    while (line.startsWith(u'#'))
        line.remove(0, 1);
    return line.trimmed();
}

} // namespace

QList<RecordChange<DeletedDocument>> DocumentLibrary::applyDeleted(QList<RecordChange<DeletedDocument>> changes,
                                                                   const StateChange &done)
{
    QList<DeletedDocument> deleted = deletedDocuments();
    // A document that comes back by any way is no longer a deleted one.
    for (const RecordChange<MarkdownDocument> &change : done.documents) {
        const qsizetype row = change.before ? -1 : rowOf(deleted, change.id);
        const auto isOfDocument = [&change](const auto &other) { return other.id == change.id; };
        if (row >= 0 && std::ranges::none_of(changes, isOfDocument))
            changes.append(removalOf(deleted.at(row), row));
    }
    if (changes.isEmpty())
        return {};
    auto applied = applyChanges(deleted, changes);
    m_library.deleted = deleted.isEmpty() ? std::nullopt : std::optional(std::move(deleted));
    return std::move(applied.changes);
}

void DocumentLibrary::moveFiles(const StateChange &done)
{
    for (const RecordChange<MarkdownDocument> &change : done.documents) {
        if (!change.after)
            m_deletedFolder.take(m_folder, change.id, sharedPictures(change.id));
        else if (!change.before)
            m_deletedFolder.giveBack(m_folder, change.id);
    }
}

QSet<QString> DocumentLibrary::sharedPictures(const QUuid &id) const
{
    const QStringList pictures = m_folder.pictures(id);
    QSet<QString> shared;
    if (pictures.isEmpty())
        return shared;
    for (const MarkdownDocument &other : m_library.documents) {
        const QByteArray text = m_ports.fileSystem.read(m_folder.documentPath(other.id)).value_or(QByteArray());
        for (const QString &picture : pictures) {
            if (other.id != id && text.contains(picture.toUtf8()))
                shared.insert(picture);
        }
    }
    return shared;
}

void DocumentLibrary::deleteDocument(const MarkdownDocument &document)
{
    const qsizetype row = rowOf(m_library.documents, document.id);
    if (row < 0)
        return;
    StateChange change{.documents = {removalOf(m_library.documents.at(row), row)}};
    listRemoved(change);
    m_perform(change);
}

void DocumentLibrary::listRemoved(StateChange &change) const
{
    qsizetype row = deletedDocuments().size();
    for (const RecordChange<MarkdownDocument> &removal : std::as_const(change.documents)) {
        if (removal.after || !removal.before)
            continue;
        const DeletedDocument deleted{.id = removal.id,
                                      .title = removal.before->title,
                                      .categoryID = removal.before->categoryID,
                                      .updatedAt = removal.before->updatedAt,
                                      .deletedAt = m_ports.clock.now()};
        change.deletedDocuments.append(additionOf(deleted, row++));
    }
}

void DocumentLibrary::restoreDocument(const QUuid &id)
{
    const QList<DeletedDocument> deleted = deletedDocuments();
    const qsizetype row = rowOf(deleted, id);
    if (row < 0)
        return;
    const DeletedDocument &stored = deleted.at(row);
    const MarkdownDocument restored{
        .id = stored.id, .title = stored.title, .categoryID = stored.categoryID, .updatedAt = stored.updatedAt};
    m_perform({.documents = {additionOf(restored, m_library.documents.size())},
               .deletedDocuments = {removalOf(stored, row)}});
}

void DocumentLibrary::destroyDeletedDocuments()
{
    QList<QUuid> ids;
    for (const DeletedDocument &document : deletedDocuments())
        ids.append(document.id);
    destroyDocuments(ids);
}

void DocumentLibrary::destroyDocuments(const QList<QUuid> &ids)
{
    QList<DeletedDocument> deleted = deletedDocuments();
    const auto isGone = [&ids](const DeletedDocument &document) { return ids.contains(document.id); };
    if (deleted.removeIf(isGone) == 0)
        return;
    m_library.deleted = deleted.isEmpty() ? std::nullopt : std::optional(std::move(deleted));
    // Before the files: after a crash in between the text is found again, and nothing is listed without a text.
    saveDocumentMetadata();
    for (const QUuid &id : ids) {
        m_deletedFolder.destroy(id);
        m_drafts.drop(id);
        m_versions.drop(id);
        emit documentDestroyed(id);
    }
    emit deletedDocumentsChanged();
}

int DocumentLibrary::daysLeft(const DeletedDocument &document) const
{
    const QDate today = m_ports.calendar.day(m_ports.clock.now());
    return deletedDocumentDays - int(m_ports.calendar.day(document.deletedAt).daysTo(today));
}

void DocumentLibrary::destroyExpired()
{
    QList<QUuid> expired;
    for (const DeletedDocument &document : deletedDocuments()) {
        if (daysLeft(document) <= 0)
            expired.append(document.id);
    }
    destroyDocuments(expired);
}

void DocumentLibrary::start()
{
    for (const QUuid &id : m_deletedFolder.documents()) {
        if (rowOf(m_library.documents, id) >= 0)
            m_deletedFolder.giveBack(m_folder, id);
    }
    for (const DeletedDocument &document : deletedDocuments())
        m_deletedFolder.take(m_folder, document.id, sharedPictures(document.id));
    adoptStrays();
    destroyExpired();
}

/// Texts that no list knows: of an added document whose addition was undone, or of one that an older program dropped
/// from its list.
void DocumentLibrary::adoptStrays()
{
    QList<DeletedDocument> deleted = deletedDocuments();
    const qsizetype known = deleted.size();
    for (const QUuid &id : m_deletedFolder.documents()) {
        if (rowOf(m_library.documents, id) >= 0 || rowOf(deleted, id) >= 0)
            continue;
        const QByteArray text = m_deletedFolder.read(id).value_or(QByteArray());
        const Instant now = m_ports.clock.now();
        deleted.append({.id = id, .title = titleOf(text), .updatedAt = now, .deletedAt = now});
    }
    if (deleted.size() == known)
        return;
    m_library.deleted = deleted;
    saveDocumentMetadata();
    emit deletedDocumentsChanged();
}

} // namespace tessaly

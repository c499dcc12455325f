#include "store/DocumentLibrary.h"

#include "model/RecordCodec.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"
#include "store/StoredValues.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

namespace tessaly {

namespace {

QString folderFromPreferences(const PlannerPorts &ports)
{
    const QString stored = ports.preferences.get<QString>(keys::documentSaveLocationKey).value_or(QString());
    return stored.isEmpty() ? ports.documentsFolder : stored;
}

/// The text of a file that is UTF-8, without a byte order mark.
std::optional<QString> utf8Text(const std::optional<QByteArray> &bytes)
{
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(*bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

DocumentLibrary::DocumentLibrary(const PlannerPorts &ports, StoredValues &values, Perform perform, QObject *parent)
    : QObject(parent), m_ports(ports), m_values(values), m_folder(ports.fileSystem, folderFromPreferences(ports)),
      m_deletedFolder(ports.fileSystem, ports.deletedFolder), m_drafts(ports.fileSystem, ports.draftsFolder),
      m_versions(ports.fileSystem, ports.versionsFolder), m_perform(std::move(perform))
{
}

const FileSystem &DocumentLibrary::files() const
{
    return m_ports.fileSystem;
}

void DocumentLibrary::load()
{
    if (auto library = m_values.decoded(keys::documentMetadataKey, decodeDocumentLibrary))
        m_library = *std::move(library);
}

void DocumentLibrary::saveDocumentMetadata()
{
    m_values.saveBlob(keys::documentMetadataKey, [this]() -> Result<void> {
        const std::optional<QByteArray> json = encodeDocumentLibrary(m_library);
        return json ? m_ports.preferences.setValue(keys::documentMetadataKey, *json) : Result<void>();
    });
}

DocumentLibrary::Touched DocumentLibrary::apply(const StateChange &change, StateChange &done)
{
    auto categories = applyChanges(m_library.categories, change.categories);
    auto documents = applyChanges(m_library.documents, change.documents);
    done.categories = std::move(categories.changes);
    done.documents = std::move(documents.changes);
    done.deletedDocuments = applyDeleted(change.deletedDocuments, done);
    // Before the lists are saved: whichever of the two a crash leaves undone, the text is in one of the folders, and
    // start() brings it to where the lists say.
    moveFiles(done);
    const bool areDeletedTouched = !done.deletedDocuments.isEmpty();
    if (categories.rows || documents.rows || areDeletedTouched)
        saveDocumentMetadata();
    return {categories.rows, documents.rows, areDeletedTouched};
}

void DocumentLibrary::announce(const Touched &touched)
{
    if (touched.categories)
        emit documentCategoriesChanged(*touched.categories);
    if (touched.documents)
        emit documentsChanged(*touched.documents);
    if (touched.areDeletedTouched)
        emit deletedDocumentsChanged();
}

void DocumentLibrary::documentsAssigned(const RowsChange &rows)
{
    saveDocumentMetadata();
    emit documentsChanged(rows);
}

void DocumentLibrary::touch(const QUuid &id)
{
    if (const qsizetype row = rowOf(m_library.documents, id); row >= 0) {
        m_library.documents[row].updatedAt = m_ports.clock.now();
        documentsAssigned({RowsChange::Kind::Updated, row, 1});
    }
}

template <class Change>
void DocumentLibrary::edit(const QUuid &id, Change change)
{
    const qsizetype row = rowOf(m_library.documents, id);
    if (row < 0)
        return;
    MarkdownDocument document = m_library.documents.at(row);
    change(document);
    // Saving a document sets its title and category again: no step.
    if (document == m_library.documents.at(row)) {
        touch(id);
        return;
    }
    document.updatedAt = m_ports.clock.now();
    m_perform({.documents = {editOf(m_library.documents.at(row), document, row)}});
}

DocumentsMove DocumentLibrary::setDocumentSaveLocation(const QUrl &folder)
{
    if (!folder.isLocalFile())
        return DocumentsMove::RefusedUnusable;
    const DocumentsMove outcome = m_folder.moveTo(QDir::cleanPath(folder.toLocalFile()), m_library.documents);
    if (outcome == DocumentsMove::Done || outcome == DocumentsMove::Incomplete) {
        m_values.save(keys::documentSaveLocationKey, m_folder.path());
        emit documentSaveLocationChanged();
    }
    return outcome;
}

void DocumentLibrary::addDocumentCategory(const QString &name)
{
    const QString trimmed = name.trimmed();
    if (!trimmed.isEmpty())
        m_perform({.categories = {additionOf(MarkdownCategory{.name = trimmed}, m_library.categories.size())}});
}

void DocumentLibrary::renameDocumentCategory(const QUuid &id, const QString &name)
{
    const qsizetype row = rowOf(m_library.categories, id);
    if (row >= 0)
        m_perform({.categories = {editOf(m_library.categories.at(row), {.id = id, .name = name}, row)}});
}

void DocumentLibrary::deleteDocumentCategory(const QUuid &id)
{
    StateChange change;
    if (const qsizetype row = rowOf(m_library.categories, id); row >= 0)
        change.categories = {removalOf(m_library.categories.at(row), row)};
    for (qsizetype row = 0; row < m_library.documents.size(); ++row) {
        const MarkdownDocument &document = m_library.documents.at(row);
        MarkdownDocument uncategorised = document;
        uncategorised.categoryID.reset();
        if (document.categoryID == id)
            change.documents.append(editOf(document, uncategorised, row));
    }
    m_perform(change);
}

std::optional<MarkdownDocument> DocumentLibrary::addDocument(const QString &title,
                                                             const std::optional<QUuid> &categoryID)
{
    const QString trimmed = title.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    const MarkdownDocument document{.title = trimmed, .categoryID = categoryID, .updatedAt = m_ports.clock.now()};
    m_perform({.documents = {additionOf(document, m_library.documents.size())}});
    m_folder.write(document.id, QStringLiteral("# ") + trimmed + u'\n');
    return document;
}

std::optional<MarkdownDocument> DocumentLibrary::importMarkdownFiles(const QList<QUrl> &files,
                                                                     const std::optional<QUuid> &categoryID)
{
    StateChange change;
    QStringList texts;
    for (const QUrl &url : files) {
        const QFileInfo file(url.toLocalFile());
        const QString title = file.completeBaseName().trimmed();
        if (title.isEmpty() || file.suffix().toLower() != u"md")
            continue;
        const std::optional<QString> text = utf8Text(m_ports.fileSystem.read(file.absoluteFilePath()));
        if (!text)
            continue;
        const MarkdownDocument document{.title = title, .categoryID = categoryID, .updatedAt = m_ports.clock.now()};
        change.documents.append(additionOf(document, m_library.documents.size() + texts.size()));
        texts.append(*text);
    }
    if (texts.isEmpty())
        return std::nullopt;
    m_perform(change);
    for (qsizetype row = 0; row < texts.size(); ++row)
        (void)saveDocument(*change.documents.at(row).after, texts.at(row));
    return change.documents.constLast().after;
}

DocumentText DocumentLibrary::readDocument(const MarkdownDocument &document)
{
    return m_folder.read(document.id);
}

DocumentWrite DocumentLibrary::saveDocument(const MarkdownDocument &document, const QString &content)
{
    const QUuid id = document.id;
    const std::optional<QByteArray> former = m_ports.fileSystem.read(m_folder.documentPath(id));
    DocumentWrite outcome = m_folder.write(id, content);
    if (outcome) {
        m_drafts.drop(id);
        keepVersion(id, former);
    }
    touch(id);
    return outcome;
}

void DocumentLibrary::keepVersion(const QUuid &id, const std::optional<QByteArray> &former)
{
    const qsizetype row = rowOf(m_library.documents, id);
    if (former && row >= 0 && former != m_ports.fileSystem.read(m_folder.documentPath(id)))
        m_versions.keep(id, m_library.documents.at(row).updatedAt, *former);
}

void DocumentLibrary::keepReplaced(const QString &source, const QString &name)
{
    const QString replaced = m_folder.path() + u'/' + name;
    for (const MarkdownDocument &document : m_library.documents) {
        if (m_folder.documentPath(document.id) != replaced)
            continue;
        const std::optional<QByteArray> former = m_ports.fileSystem.read(replaced);
        if (former && former != m_ports.fileSystem.read(source))
            m_versions.keep(document.id, document.updatedAt, *former);
    }
}

bool DocumentLibrary::keepDraft(const MarkdownDocument &document, DocumentDraft draft)
{
    draft.version = m_folder.knownVersion(document.id);
    return m_drafts.keep(document.id, draft);
}

std::optional<DocumentDraft> DocumentLibrary::takeUpDraft(const MarkdownDocument &document, const QString &content)
{
    std::optional<DocumentDraft> draft = m_drafts.draft(document.id);
    if (!draft)
        return std::nullopt;
    if (draft->title == document.title && draft->categoryID == document.categoryID && draft->content == content) {
        m_drafts.drop(document.id);
        return std::nullopt;
    }
    m_folder.setKnownVersion(document.id, draft->version);
    return draft;
}

void DocumentLibrary::renameDocument(const MarkdownDocument &document, const QString &title)
{
    const QString trimmed = title.trimmed();
    if (!trimmed.isEmpty())
        edit(document.id, [&trimmed](MarkdownDocument &changed) { changed.title = trimmed; });
}

void DocumentLibrary::setDocumentCategory(const MarkdownDocument &document, const std::optional<QUuid> &categoryID)
{
    const std::optional<QUuid> category = categoryID;
    edit(document.id, [&category](MarkdownDocument &changed) { changed.categoryID = category; });
}

std::optional<QString> DocumentLibrary::importImage(const MarkdownDocument &document, const QUrl &source)
{
    return m_folder.importImage(document.id, source);
}

} // namespace tessaly

#include "views/documents/DocumentLibraryViewModel.h"

#include "model/Uuid.h"
#include "platform/FileDialogs.h"
#include "store/RecordRows.h"
#include "views/documents/CategoryChoice.h"

#include <QPointer>

namespace tessaly {

using Kind = DocumentRow::Kind;

DocumentLibraryViewModel::DocumentLibraryViewModel(QObject *parent) : QObject(parent), m_rows(documentListRoles())
{
}

void DocumentLibraryViewModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(&library(), &DocumentLibrary::documentCategoriesChanged, this,
            &DocumentLibraryViewModel::onCategoriesChanged);
    connect(&library(), &DocumentLibrary::documentsChanged, this, &DocumentLibraryViewModel::refreshRows);
    connect(&library(), &DocumentLibrary::deletedDocumentsChanged, this, &DocumentLibraryViewModel::refreshRows);
    connect(store, &PlannerStore::todayChanged, this, &DocumentLibraryViewModel::refreshRows);
    const auto show = [this](const UndoStep &step) { showChanged(step.change); };
    connect(&store->history(), &UndoHistory::undone, this, show);
    connect(&store->history(), &UndoHistory::redone, this, show);
    connect(&library(), &DocumentLibrary::documentSaveLocationChanged, this,
            &DocumentLibraryViewModel::saveLocationChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &DocumentLibraryViewModel::onCategoriesChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this,
            &DocumentLibraryViewModel::saveLocationMessageChanged);
    onCategoriesChanged();
    emit storeChanged();
    emit saveLocationChanged();
}

QString DocumentLibraryViewModel::saveLocation() const
{
    return m_store ? library().documentSaveLocation() : QString();
}

int DocumentLibraryViewModel::selectedCategory() const
{
    return m_store ? categoryEntry(*m_store, m_selectedCategoryID) : 0;
}

void DocumentLibraryViewModel::setSelectedCategory(int entry)
{
    m_selectedCategoryID = categoryOfEntry(*m_store, entry);
    emit selectedCategoryChanged();
}

void DocumentLibraryViewModel::onCategoriesChanged()
{
    const QList<MarkdownCategory> &categories = library().documentCategories();
    // A category that is gone can neither be edited nor take new documents.
    if (m_selectedCategoryID && rowOf(categories, *m_selectedCategoryID) < 0)
        m_selectedCategoryID.reset();
    if (rowOf(categories, m_groups.editingCategory) < 0)
        m_groups.editingCategory = {};
    m_categories = categoryEntries(*m_store);
    emit categoriesChanged();
    emit selectedCategoryChanged();
    refreshRows();
}

void DocumentLibraryViewModel::refreshRows()
{
    m_rows.setRows(documentListRows(library().documentCategories(), library().documents(), deletedRows(), m_groups));
}

QList<DocumentListRow> DocumentLibraryViewModel::deletedRows() const
{
    const QList<DeletedDocument> deleted = library().deletedDocuments();
    if (deleted.isEmpty())
        return {};
    const QString summary =
        m_store->text(QStringLiteral("%1 · %2 天后彻底删除"), QStringLiteral("%1 · deleted for good after %2 days"));
    QList<DocumentListRow> rows{{.kind = Kind::RecentlyDeleted,
                                 .note = summary.arg(deleted.size()).arg(deletedDocumentDays),
                                 .isExpanded = m_groups.isDeletedExpanded}};
    const QLocale locale = interfaceLocale(m_store->isEnglish());
    const QString pattern = m_store->text(QStringLiteral("M月d日"), QStringLiteral("MMM d"));
    for (auto document = deleted.crbegin(); document != deleted.crend(); ++document) {
        const QString day = locale.toString(m_store->calendar().day(document->deletedAt), pattern);
        const int left = library().daysLeft(*document);
        const QString note =
            m_store->text(QStringLiteral("%1删除，还剩 %2 天"), left == 1 ? QStringLiteral("Deleted %1, %2 day left")
                                                                          : QStringLiteral("Deleted %1, %2 days left"));
        rows.append(
            {.kind = Kind::Deleted, .id = document->id, .title = document->title, .note = note.arg(day).arg(left)});
    }
    return rows;
}

void DocumentLibraryViewModel::showChanged(const StateChange &change)
{
    QSet<QUuid> ids;
    for (const auto &each : change.categories)
        ids.insert(each.id);
    for (const auto &each : change.documents)
        ids.insert(each.id);
    const QList<DocumentListRow> &rows = m_rows.rows();
    for (qsizetype row = 0; row < rows.size(); ++row) {
        if (ids.contains(rows.at(row).id) && rows.at(row).kind != Kind::NoDocuments)
            emit added(int(row));
    }
}

DocumentListRow DocumentLibraryViewModel::rowAt(int row) const
{
    const DocumentListRow none{.kind = Kind::NoDocuments};
    return m_rows.rows().value(row, none);
}

void DocumentLibraryViewModel::addCategory()
{
    const qsizetype count = library().documentCategories().size();
    library().addDocumentCategory(m_categoryName);
    m_categoryName.clear();
    emit formChanged();
    if (library().documentCategories().size() > count)
        showChanged({.categories = {additionOf(library().documentCategories().constLast(), count)}});
}

void DocumentLibraryViewModel::addDocument()
{
    const std::optional<MarkdownDocument> document = library().addDocument(m_documentTitle, m_selectedCategoryID);
    if (!document)
        return;
    m_documentTitle.clear();
    emit formChanged();
    edit(document);
}

void DocumentLibraryViewModel::importMarkdown()
{
    const FileDialogs::FileQuestion question{
        .title = m_store->text(QStringLiteral("导入 Markdown 文档"), QStringLiteral("Import Markdown documents")),
        .extensions = {QStringLiteral("md"), QStringLiteral("markdown")},
        .allowsSeveral = true};
    m_desktop->fileDialogs().chooseFiles(question, [self = QPointer(this)](const QList<QUrl> &files) {
        if (self)
            self->edit(self->library().importMarkdownFiles(files, self->m_selectedCategoryID));
    });
}

void DocumentLibraryViewModel::chooseSaveLocation()
{
    const QString title =
        m_store->text(QStringLiteral("选择文档保存位置"), QStringLiteral("Choose document save location"));
    m_desktop->fileDialogs().chooseFolder(title, QUrl::fromLocalFile(saveLocation()),
                                          [self = QPointer(this)](const QUrl &folder) {
                                              if (self && !folder.isEmpty())
                                                  self->setSaveLocation(folder);
                                          });
}

void DocumentLibraryViewModel::setSaveLocation(const QUrl &folder)
{
    const QString formerFolder = saveLocation();
    m_lastMove = library().setDocumentSaveLocation(folder);
    m_lastMoveFolder = m_lastMove == DocumentsMove::Incomplete ? formerFolder : folder.toLocalFile();
    emit saveLocationMessageChanged();
}

QString DocumentLibraryViewModel::saveLocationMessage() const
{
    switch (m_lastMove) {
    case DocumentsMove::Done:
        break;
    case DocumentsMove::Incomplete:
        return m_store
            ->text(QStringLiteral("有些文件未能移动，仍在原处：%1"),
                   QStringLiteral("Some files could not be moved. They are still in %1"))
            .arg(m_lastMoveFolder);
    case DocumentsMove::RefusedWithinAssets:
        return m_store->text(QStringLiteral("Assets 文件夹存放文档的图片，文档不能保存在其中。保存位置未改变。"),
                             QStringLiteral("The Assets folder holds the documents' pictures, so documents cannot be "
                                            "kept in it. The save location has not changed."));
    case DocumentsMove::RefusedUnusable:
        return m_store
            ->text(QStringLiteral("无法在此文件夹中保存文档，保存位置未改变：%1"),
                   QStringLiteral("Documents cannot be saved in this folder. The save location has not changed: %1"))
            .arg(m_lastMoveFolder);
    }
    return {};
}

int DocumentLibraryViewModel::reveal(const QString &documentId)
{
    const QUuid id(documentId);
    const qsizetype libraryRow = rowOf(library().documents(), id);
    if (libraryRow < 0)
        return -1;
    const std::optional<QUuid> category = library().documents().at(libraryRow).categoryID;
    if (category && rowOf(library().documentCategories(), *category) >= 0)
        m_groups.expandedCategories.insert(*category);
    else
        m_groups.isUncategorizedExpanded = true;
    refreshRows();
    const auto found = std::ranges::find_if(
        m_rows.rows(), [&](const DocumentListRow &row) { return row.kind == Kind::Document && row.id == id; });
    return found == m_rows.rows().cend() ? -1 : static_cast<int>(found - m_rows.rows().cbegin());
}

void DocumentLibraryViewModel::setExpanded(int row, bool isExpanded)
{
    const DocumentListRow header = rowAt(row);
    if (header.kind == Kind::Uncategorized)
        m_groups.isUncategorizedExpanded = isExpanded;
    else if (header.kind == Kind::RecentlyDeleted)
        m_groups.isDeletedExpanded = isExpanded;
    else if (header.kind == Kind::Category && isExpanded)
        m_groups.expandedCategories.insert(header.id);
    else if (header.kind == Kind::Category)
        m_groups.expandedCategories.remove(header.id);
    refreshRows();
}

void DocumentLibraryViewModel::setEditing(int row, bool isEditing)
{
    if (rowAt(row).kind != Kind::Category)
        return;
    m_groups.editingCategory = isEditing ? rowAt(row).id : QUuid();
    refreshRows();
}

void DocumentLibraryViewModel::renameCategory(int row, const QString &name)
{
    if (rowAt(row).kind == Kind::Category)
        library().renameDocumentCategory(rowAt(row).id, name);
}

void DocumentLibraryViewModel::openDocument(int row)
{
    if (rowAt(row).kind == Kind::Document)
        emit editRequested(uuidText(rowAt(row).id));
}

void DocumentLibraryViewModel::remove(int row)
{
    const DocumentListRow removed = rowAt(row);
    if (removed.kind == Kind::Category)
        library().deleteDocumentCategory(removed.id);
    else if (removed.kind == Kind::Document)
        library().deleteDocument({.id = removed.id});
}

QString DocumentLibraryViewModel::documentId(int row) const
{
    return uuidText(rowAt(row).id);
}

void DocumentLibraryViewModel::restore(int row)
{
    if (rowAt(row).kind == Kind::Deleted)
        library().restoreDocument(rowAt(row).id);
}

void DocumentLibraryViewModel::destroy(const QString &documentId)
{
    library().destroyDocument(QUuid(documentId));
}

void DocumentLibraryViewModel::destroyAll()
{
    library().destroyDeletedDocuments();
}

int DocumentLibraryViewModel::rowToFocusAfterRemoval(int row, DocumentRow::Kind kind) const
{
    const auto isSame = [this, kind](int candidate) { return rowAt(candidate).kind == kind; };
    if (kind == Kind::Document) {
        if (isSame(row) || isSame(row - 1))
            return isSame(row) ? row : row - 1;
        // The header of the group, which is empty now.
        return row - 1;
    }
    if (kind == Kind::Deleted || kind == Kind::RecentlyDeleted)
        return isSame(row) ? row : isSame(row - 1) ? row - 1 : 0;
    const auto count = static_cast<int>(m_rows.rows().size());
    for (int candidate = row; candidate < count; ++candidate) {
        if (isSame(candidate))
            return candidate;
    }
    for (int candidate = row - 1; candidate > 0; --candidate) {
        if (isSame(candidate))
            return candidate;
    }
    return 0;
}

void DocumentLibraryViewModel::edit(const std::optional<MarkdownDocument> &document)
{
    if (document)
        emit editRequested(uuidText(document->id));
}

} // namespace tessaly

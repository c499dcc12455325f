#include "views/documents/DocumentRows.h"

#include "model/MarkdownDocument.h"

#include <QHash>

#include <algorithm>

namespace tessaly {

namespace {

using Kind = DocumentRow::Kind;

/// Rows of the documents in each category, last changed first; under a null id those without one.
QHash<QUuid, QList<qsizetype>> documentsByCategory(const QList<MarkdownCategory> &categories,
                                                   const QList<MarkdownDocument> &documents)
{
    QSet<QUuid> known;
    for (const MarkdownCategory &category : categories)
        known.insert(category.id);
    QHash<QUuid, QList<qsizetype>> groups;
    for (qsizetype row = 0; row < documents.size(); ++row) {
        // A category that is not there would hide its documents for good.
        const QUuid category = documents.at(row).categoryID.value_or(QUuid());
        groups[known.contains(category) ? category : QUuid()].append(row);
    }
    for (QList<qsizetype> &rows : groups)
        std::ranges::stable_sort(rows, std::ranges::greater(),
                                 [&documents](qsizetype row) { return documents.at(row).updatedAt; });
    return groups;
}

} // namespace

QList<DocumentListRows::Role> documentListRoles()
{
    return {{"kind", [](const DocumentListRow &row) { return QVariant::fromValue(row.kind); }},
            {"title", [](const DocumentListRow &row) { return QVariant(row.title); }},
            {"note", [](const DocumentListRow &row) { return QVariant(row.note); }},
            {"isExpanded", [](const DocumentListRow &row) { return QVariant(row.isExpanded); }},
            {"isEditing", [](const DocumentListRow &row) { return QVariant(row.isEditing); }},
            {"isLast", [](const DocumentListRow &row) { return QVariant(row.isLast); }}};
}

QList<DocumentListRow> documentListRows(const QList<MarkdownCategory> &categories,
                                        const QList<MarkdownDocument> &documents, const QList<DocumentListRow> &deleted,
                                        const DocumentGroupStates &states)
{
    const QHash<QUuid, QList<qsizetype>> groups = documentsByCategory(categories, documents);
    QList<DocumentListRow> rows;
    const auto addGroup = [&](const DocumentListRow &header) {
        rows.append(header);
        if (!header.isExpanded)
            return;
        const QList<qsizetype> members = groups.value(header.id);
        if (members.isEmpty())
            rows.append({.kind = Kind::NoDocuments, .id = header.id});
        for (const qsizetype row : members)
            rows.append({.kind = Kind::Document, .id = documents.at(row).id, .title = documents.at(row).title});
    };
    addGroup({.kind = Kind::Uncategorized, .isExpanded = states.isUncategorizedExpanded});
    for (const MarkdownCategory &category : categories)
        addGroup({.kind = Kind::Category,
                  .id = category.id,
                  .title = category.name,
                  .isExpanded = states.expandedCategories.contains(category.id),
                  .isEditing = states.editingCategory == category.id});
    if (states.isDeletedExpanded)
        rows.append(deleted);
    else
        rows.append(deleted.first(std::min(deleted.size(), qsizetype(1))));
    rows.last().isLast = true;
    return rows;
}

} // namespace tessaly

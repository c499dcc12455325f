#pragma once

#include "views/RowListModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqml.h>
#include <QUuid>

#include <utility>

namespace tessaly {

struct MarkdownCategory;
struct MarkdownDocument;

/// What rows of the documents screen stand for.
namespace DocumentRow {
Q_NAMESPACE
QML_ELEMENT

enum class Kind {
    Uncategorized, ///< header of the documents without a category; begins the card
    Category,      ///< header of a category
    Document,
    NoDocuments,     ///< stands in an open group that has no documents
    RecentlyDeleted, ///< header of the documents that can be restored; ends the card
    Deleted,
};
Q_ENUM_NS(Kind)
} // namespace DocumentRow

/// A row of the documents screen. Roles: kind, title (of a category or document), note (of deleted documents and their
/// header: how long they are kept), isExpanded (of headers), isEditing
/// (of a category whose name is being edited), isLast (of the card).
struct DocumentListRow
{
    DocumentRow::Kind kind = DocumentRow::Kind::Document;
    /// Of the document, or of the category whose row or empty group it is.
    QUuid id = {};
    QString title = {};
    QString note = {};
    bool isExpanded = false;
    bool isEditing = false;
    bool isLast = false;

    [[nodiscard]] std::pair<int, QUuid> key() const { return {static_cast<int>(kind), id}; }
    bool operator==(const DocumentListRow &) const = default;
};

using DocumentListRows = RowListModel<DocumentListRow>;

[[nodiscard]] QList<DocumentListRows::Role> documentListRoles();

/// Which groups are open, and which name is being edited.
struct DocumentGroupStates
{
    bool isUncategorizedExpanded = true;
    bool isDeletedExpanded = false;
    QSet<QUuid> expandedCategories = {};
    /// Null: none.
    QUuid editingCategory = {};
};

/// The groups in stored order; in each open group its documents, last changed first. Then `deleted`: the header and its
/// documents, of which only the header is shown while the group is closed; nothing while it is empty.
[[nodiscard]] QList<DocumentListRow> documentListRows(const QList<MarkdownCategory> &categories,
                                                      const QList<MarkdownDocument> &documents,
                                                      const QList<DocumentListRow> &deleted,
                                                      const DocumentGroupStates &states);

} // namespace tessaly

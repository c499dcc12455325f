#pragma once

#include "model/Instant.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

struct MarkdownCategory
{
    QUuid id = QUuid::createUuid();
    QString name = {};

    bool operator==(const MarkdownCategory &) const = default;
};

/// Metadata of one Markdown document; the text lives in a file named after `id`.
struct MarkdownDocument
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    /// Absent: uncategorised.
    std::optional<QUuid> categoryID = {};
    Instant updatedAt = {};

    bool operator==(const MarkdownDocument &) const = default;
};

/// A document that was deleted and can still be restored; otherwise as it was.
struct DeletedDocument
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    std::optional<QUuid> categoryID = {};
    Instant updatedAt = {};
    Instant deletedAt = {};

    bool operator==(const DeletedDocument &) const = default;
};

/// How many days a deleted document is kept.
inline constexpr int deletedDocumentDays = 30;

} // namespace tessaly

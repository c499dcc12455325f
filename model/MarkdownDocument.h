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

} // namespace tessaly

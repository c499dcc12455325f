#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace tessaly {

/// `removed` bytes at `offset` of a blob give way to the `inserted` bytes.
struct StoredEdit
{
    qint64 offset = 0;
    qint64 removed = 0;
    QByteArray inserted = {};
};

/// The blob after the edits, one after the other. Nothing when an edit reaches beyond the blob of its moment. Each byte
/// of the base is copied once, however many edits there are.
[[nodiscard]] std::optional<QByteArray> applyEdits(QByteArrayView base, const QList<StoredEdit> &edits);

} // namespace tessaly

#pragma once

#include "model/RowsChange.h"

#include <QList>
#include <QUuid>

#include <algorithm>
#include <optional>

namespace tessaly {

// Changes of a list of records that carry an `id`. Each makes the change and says which rows it touched.

/// Row of the first record with the id, or -1.
template <class Record>
[[nodiscard]] qsizetype rowOf(const QList<Record> &records, const QUuid &id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.cend() ? -1 : found - records.cbegin();
}

template <class Record>
[[nodiscard]] RowsChange appendRecord(QList<Record> &records, const Record &record)
{
    records.append(record);
    return {RowsChange::Kind::Inserted, records.size() - 1, 1};
}

/// Replaces the first record with the id of `record`; without one nothing changes and nothing is returned.
template <class Record>
[[nodiscard]] std::optional<RowsChange> replaceRecord(QList<Record> &records, const Record &record)
{
    const qsizetype row = rowOf(records, record.id);
    if (row < 0)
        return std::nullopt;
    records[row] = record;
    return RowsChange{RowsChange::Kind::Updated, row, 1};
}

/// `id` may be that of a record in the list. Removes every record with the id; without one nothing changes and nothing
/// is returned.
template <class Record>
[[nodiscard]] std::optional<RowsChange> removeRecords(QList<Record> &records, QUuid id)
{
    const qsizetype row = rowOf(records, id);
    if (row < 0)
        return std::nullopt;
    records.removeAt(row);
    const qsizetype duplicates = records.removeIf([&id](const Record &record) { return record.id == id; });
    return duplicates > 0 ? RowsChange{} : RowsChange{RowsChange::Kind::Removed, row, 1};
}

} // namespace tessaly

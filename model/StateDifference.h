#pragma once

#include "model/StateChange.h"

#include <QHash>

namespace tessaly {

/// The changes that lead from one list of records to another, by their ids; of records with one id, the first counts.
/// Records in both that are equal are left out. The order of those that stay does not change.
template <class Record>
[[nodiscard]] QList<RecordChange<Record>> differences(const QList<Record> &before, const QList<Record> &after)
{
    QList<RecordChange<Record>> changes;
    QHash<QUuid, qsizetype> rowsAfter;
    for (qsizetype row = after.size() - 1; row >= 0; --row)
        rowsAfter.insert(after.at(row).id, row);
    QSet<QUuid> seen;
    for (qsizetype row = 0; row < before.size(); ++row) {
        const Record &record = before.at(row);
        if (seen.contains(record.id))
            continue;
        seen.insert(record.id);
        const auto found = rowsAfter.constFind(record.id);
        if (found == rowsAfter.cend())
            changes.append(removalOf(record, row));
        else if (after.at(*found) != record)
            changes.append(editOf(record, after.at(*found), row));
    }
    for (qsizetype row = 0; row < after.size(); ++row) {
        if (seen.contains(after.at(row).id))
            continue;
        seen.insert(after.at(row).id);
        changes.append(additionOf(after.at(row), row));
    }
    return changes;
}

} // namespace tessaly

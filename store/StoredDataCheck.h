#pragma once

#include <QStringList>

#include <functional>

namespace tessaly {

class PlannerStore;

/// What a check of everything that is stored has found.
struct StoredDataReport
{
    /// What is wrong and where, in sentences of the interface language.
    QStringList problems = {};
    /// How many of each were checked.
    qsizetype generations = 0;
    qsizetype documents = 0;
};

/// Checks every byte of the database and of its generations, and that the text of each document can be read. Changes
/// nothing. The report comes later, and not at all once the store is gone.
void checkStoredData(PlannerStore &store, const std::function<void(const StoredDataReport &)> &completion);

} // namespace tessaly

#pragma once

#include "platform/Archives.h"

#include <QObject>

namespace tessaly {

class PlannerStore;
class StoredValues;
struct ArchiveContents;
struct PlannerPorts;
struct StateChange;

/// The part of the planner store that writes everything into one archive, and reads it back. Main thread only; the
/// archives themselves are written and read in the background.
class PlannerArchive : public QObject
{
    Q_OBJECT

public:
    using Completion = Archives::Completion;

    /// All must outlive it.
    PlannerArchive(PlannerStore &store, const PlannerPorts &ports, StoredValues &values);

    /// Writes everything as it is now. Text that is in an editor and not saved yet is not part of it.
    void write(const QString &path, const Completion &completion);
    /// Replaces everything by what the archive holds, as one step that can be undone; the texts of documents are not
    /// part of that step, but versions of them are kept. The calendars of the system are not touched. An archive that
    /// is not whole changes nothing.
    void read(const QString &path, const Completion &completion);
    /// Finishes an import during which the program ended. To be called once the store is loaded.
    void finish();

private:
    [[nodiscard]] ArchiveContents contents() const;
    [[nodiscard]] Result<void> takeExtracted();
    [[nodiscard]] Result<void> take(const ArchiveContents &imported);
    /// Files of a committed import that are still to be moved to the documents.
    [[nodiscard]] QStringList importedFiles() const;
    /// Where a file of the import lies before it is moved.
    [[nodiscard]] QString importedFile(const QString &name) const;
    void moveFiles();

    PlannerStore &m_store;
    const PlannerPorts &m_ports;
    StoredValues &m_values;
};

} // namespace tessaly

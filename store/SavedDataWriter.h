#pragma once

#include "model/SavedDataEncoder.h"
#include "model/WaitingReminder.h"
#include "store/StoredValues.h"

namespace tessaly {

/// Keeps schedules, to-dos and goals under the main key as one JSON, and their former JSON under the backup's key; the
/// reminders that wait under a key of their own, in the same transaction. Where the preferences can, only the bytes of
/// the changed records are written.
class SavedDataWriter
{
public:
    /// The values must outlive the writer, and be closed before it ends.
    explicit SavedDataWriter(StoredValues &values) : m_values(values) {}

    /// What is stored; the backup where that is missing or cannot be read; nothing where neither can.
    [[nodiscard]] std::optional<SavedData> load();
    [[nodiscard]] QList<WaitingReminder> loadWaiting();
    /// Saves the data, of which these rows have changed. What has no JSON form is not saved or reported.
    void save(const SavedData &data, SavedDataEncoder::Section section, const RowsChange &rows);
    /// What the next save of the data, or save(), saves as well.
    void setWaiting(const QList<WaitingReminder> &waiting);
    /// Saves what is not saved yet.
    void save();

private:
    [[nodiscard]] Result<void> write();
    [[nodiscard]] Result<void> writeData();

    StoredValues &m_values;
    SavedDataEncoder m_encoder;
    /// Whether the encoder holds the JSON of the data.
    bool m_isEncoded = false;
    /// Whether the JSON of the encoder is what stands under the main key.
    bool m_isStored = false;
    /// Whether the encoder's last splice leads from the stored JSON to its own.
    bool m_isEditOfStored = false;
    /// The JSON of the reminders that wait, until it is stored.
    std::optional<QByteArray> m_unsavedWaiting;
};

} // namespace tessaly

#pragma once

#include "model/SavedDataEncoder.h"
#include "store/StoredValues.h"

namespace tessaly {

/// Keeps schedules, to-dos and goals under the main key as one JSON, and their former JSON under the backup's key.
/// Where the preferences can, only the bytes of the changed records are written.
class SavedDataWriter
{
public:
    /// The values must outlive the writer, and be closed before it ends.
    explicit SavedDataWriter(StoredValues &values) : m_values(values) {}

    /// What is stored; the backup where that is missing or cannot be read; nothing where neither can.
    [[nodiscard]] std::optional<SavedData> load();
    /// Saves the data, of which these rows have changed. What has no JSON form is not saved, and nothing is told.
    void save(const SavedData &data, SavedDataEncoder::Section section, const RowsChange &rows);

private:
    [[nodiscard]] Result<void> write();

    StoredValues &m_values;
    SavedDataEncoder m_encoder;
    /// Whether the encoder holds the JSON of the data.
    bool m_isEncoded = false;
    /// Whether the JSON of the encoder is what stands under the main key.
    bool m_isStored = false;
    /// Whether the encoder's last splice leads from what stands there to its JSON.
    bool m_isEditOfStored = false;
};

} // namespace tessaly

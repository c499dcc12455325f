#include "store/SavedDataWriter.h"

#include "model/RecordCodec.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

std::optional<SavedData> SavedDataWriter::load()
{
    std::optional<SavedData> data = m_values.decoded(keys::storageKey, decodeSavedData);
    if (!data)
        data = m_values.decoded(keys::backupStorageKey, decodeSavedData);
    return data;
}

void SavedDataWriter::save(const SavedData &data, SavedDataEncoder::Section section, const RowsChange &rows)
{
    m_isEditOfStored = m_isEncoded && m_isStored;
    m_isStored = false;
    m_isEncoded = m_encoder.update(data, section, rows);
    m_values.saveBlob(keys::storageKey, [this] { return write(); });
}

Result<void> SavedDataWriter::write()
{
    if (!m_isEncoded)
        return {};
    Preferences &preferences = m_values.preferences();
    const auto [offset, removed, inserted] = m_encoder.lastSplice();
    Result<void> written = m_isEditOfStored
                               ? preferences.rotateEdited(keys::storageKey, keys::backupStorageKey, m_encoder.bytes(),
                                                          {offset, removed, inserted})
                               : preferences.rotate(keys::storageKey, keys::backupStorageKey, m_encoder.bytes());
    m_isStored = written.hasValue();
    return written;
}

} // namespace tessaly

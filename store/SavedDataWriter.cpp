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

QList<WaitingReminder> SavedDataWriter::loadWaiting()
{
    return m_values.decoded(keys::waitingReminders, decodeWaitingReminders).value_or(QList<WaitingReminder>());
}

void SavedDataWriter::save(const SavedData &data, SavedDataEncoder::Section section, const RowsChange &rows)
{
    m_isEditOfStored = m_isEncoded && m_isStored;
    m_isStored = false;
    m_isEncoded = m_encoder.update(data, section, rows);
    save();
}

void SavedDataWriter::setWaiting(const QList<WaitingReminder> &waiting)
{
    m_unsavedWaiting = encodeWaitingReminders(waiting);
}

void SavedDataWriter::save()
{
    const auto written = [this] {
        m_isStored = m_isEncoded;
        m_unsavedWaiting.reset();
    };
    m_values.saveBlob(
        keys::storageKey, [this] { return write(); }, written);
}

Result<void> SavedDataWriter::write()
{
    Preferences &preferences = m_values.preferences();
    return preferences.together([&] {
        Result<void> data = m_isEncoded && !m_isStored ? writeData() : Result<void>();
        return data && m_unsavedWaiting ? preferences.setValue(keys::waitingReminders, *m_unsavedWaiting) : data;
    });
}

Result<void> SavedDataWriter::writeData()
{
    const auto [offset, removed, inserted] = m_encoder.lastSplice();
    const std::optional edit = m_isEditOfStored ? std::optional(BlobEdit{offset, removed, inserted}) : std::nullopt;
    return m_values.preferences().rotate(keys::storageKey, keys::backupStorageKey, m_encoder.bytes(), edit);
}

} // namespace tessaly

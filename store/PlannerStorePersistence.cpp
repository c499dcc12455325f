#include "model/RecordCodec.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

void PlannerStore::loadMainData()
{
    std::optional<SavedData> data = m_values.decoded(keys::storageKey, decodeSavedData);
    if (!data)
        data = m_values.decoded(keys::backupStorageKey, decodeSavedData);
    if (data)
        m_data = *std::move(data);
}

void PlannerStore::loadCalendarFeeds()
{
    if (auto feeds = m_values.decoded(keys::calendarFeedsKey, decodeCalendarFeeds))
        m_calendarFeeds = *std::move(feeds);
}

void PlannerStore::schedulesAssigned(const RowsChange &rows)
{
    encode(SavedDataEncoder::Section::Schedules, rows);
    save();
    emit schedulesChanged(rows);
}

void PlannerStore::remindersAssigned(const RowsChange &rows)
{
    encode(SavedDataEncoder::Section::Reminders, rows);
    save();
    emit remindersChanged(rows);
}

void PlannerStore::goalsAssigned(const RowsChange &rows)
{
    encode(SavedDataEncoder::Section::Goals, rows);
    save();
    emit goalsChanged(rows);
}

void PlannerStore::calendarFeedsAssigned(const RowsChange &rows)
{
    saveCalendarFeeds();
    emit calendarFeedsChanged(rows);
}

void PlannerStore::encode(SavedDataEncoder::Section section, const RowsChange &rows)
{
    m_isEditOfStored = m_isEncoded && m_isStored;
    m_isStored = false;
    m_isEncoded = m_encoder.update(m_data, section, rows);
}

void PlannerStore::save()
{
    m_values.saveBlob(keys::storageKey, [this]() -> Result<void> {
        // What has no JSON form is not saved, and nothing is told.
        if (!m_isEncoded)
            return {};
        const auto [offset, removed, inserted] = m_encoder.lastSplice();
        Result<void> written =
            m_isEditOfStored ? m_ports.preferences.rotateEdited(keys::storageKey, keys::backupStorageKey,
                                                                m_encoder.bytes(), {offset, removed, inserted})
                             : m_ports.preferences.rotate(keys::storageKey, keys::backupStorageKey, m_encoder.bytes());
        m_isStored = written.hasValue();
        return written;
    });
}

void PlannerStore::saveCalendarFeeds()
{
    m_values.saveBlob(keys::calendarFeedsKey, [this]() -> Result<void> {
        const std::optional<QByteArray> json = encodeCalendarFeeds(m_calendarFeeds);
        return json ? m_ports.preferences.setValue(keys::calendarFeedsKey, *json) : Result<void>();
    });
}

void PlannerStore::tellSaveFailed(const Error &error)
{
    tellFailure(QStringLiteral("无法保存更改："), QStringLiteral("Could not save changes: "), error);
    m_saveFailureMessage = m_calendarSyncMessage;
}

void PlannerStore::tellSaveRecovered()
{
    // A message that came later is left alone.
    if (m_saveFailureMessage && m_calendarSyncMessage == m_saveFailureMessage)
        setCalendarSyncMessage(text(QStringLiteral("更改已全部保存。"), QStringLiteral("All changes are saved now.")));
    m_saveFailureMessage.reset();
}

} // namespace tessaly

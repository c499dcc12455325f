#include "model/RecordCodec.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

void PlannerStore::loadMainData()
{
    std::optional<SavedData> data = decoded(keys::storageKey, decodeSavedData);
    if (!data)
        data = decoded(keys::backupStorageKey, decodeSavedData);
    if (data)
        m_data = *std::move(data);
}

void PlannerStore::loadDocumentMetadata()
{
    if (auto library = decoded(keys::documentMetadataKey, decodeDocumentLibrary))
        m_library = *std::move(library);
}

void PlannerStore::loadCalendarFeeds()
{
    if (auto feeds = decoded(keys::calendarFeedsKey, decodeCalendarFeeds))
        m_calendarFeeds = *std::move(feeds);
}

template <class Value>
std::optional<Value> PlannerStore::decoded(const QString &key, std::optional<Value> (*decode)(QByteArrayView))
{
    const std::optional<PreferenceValue> stored = m_ports.preferences.value(key);
    if (!stored)
        return std::nullopt;
    const auto *blob = std::get_if<QByteArray>(&*stored);
    std::optional<Value> value = blob ? decode(*blob) : std::nullopt;
    if (!value)
        m_unreadableKeys.append(key);
    return value;
}

Result<void> PlannerStore::keepUnreadableAside()
{
    while (!m_unreadableKeys.isEmpty()) {
        const QString &key = m_unreadableKeys.constLast();
        const QDateTime now = calendar().dateTime(clock().now()).toUTC();
        const QString aside =
            key + QStringLiteral("-unreadable-") + now.toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
        if (Result<void> kept = m_ports.preferences.keepAside(key, aside); !kept)
            return kept;
        m_unreadableKeys.removeLast();
    }
    return {};
}

void PlannerStore::saveBlob(const QString &key, const std::function<Result<void>()> &write)
{
    m_writer.write(key, [this, write] {
        Result<void> kept = keepUnreadableAside();
        return kept ? write() : kept;
    });
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

void PlannerStore::documentCategoriesAssigned(const RowsChange &rows)
{
    saveDocumentMetadata();
    emit documentCategoriesChanged(rows);
}

void PlannerStore::documentsAssigned(const RowsChange &rows)
{
    saveDocumentMetadata();
    emit documentsChanged(rows);
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
    saveBlob(keys::storageKey, [this]() -> Result<void> {
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

void PlannerStore::saveDocumentMetadata()
{
    saveBlob(keys::documentMetadataKey, [this]() -> Result<void> {
        const std::optional<QByteArray> json = encodeDocumentLibrary(m_library.categories, m_library.documents);
        return json ? m_ports.preferences.setValue(keys::documentMetadataKey, *json) : Result<void>();
    });
}

void PlannerStore::saveCalendarFeeds()
{
    saveBlob(keys::calendarFeedsKey, [this]() -> Result<void> {
        const std::optional<QByteArray> json = encodeCalendarFeeds(m_calendarFeeds);
        return json ? m_ports.preferences.setValue(keys::calendarFeedsKey, *json) : Result<void>();
    });
}

void PlannerStore::savePreference(const QString &key, const PreferenceValue &value)
{
    m_writer.write(key, [this, key, value] { return m_ports.preferences.setValue(key, value); });
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

#include "store/StoredState.h"

#include "model/RecordCodec.h"
#include "platform/Preferences.h"
#include "store/ArchiveContents.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

namespace {

/// Leaves the value as it is where nothing is stored. False when what is stored cannot be decoded.
template <class Value>
bool decodeInto(Value &value, const Preferences &preferences, const QString &key,
                std::optional<Value> (*decode)(QByteArrayView))
{
    const std::optional<PreferenceValue> stored = preferences.value(key);
    if (!stored)
        return true;
    const auto *blob = std::get_if<QByteArray>(&*stored);
    std::optional<Value> decoded = blob ? decode(*blob) : std::nullopt;
    if (decoded)
        value = *std::move(decoded);
    return decoded.has_value();
}

} // namespace

QMap<QString, PreferenceValue> restorableSettings(const Preferences &preferences)
{
    QMap<QString, PreferenceValue> settings = storedSettings(preferences);
    // The window follows it at the next start only.
    settings.remove(keys::appearanceMode);
    // Lists name calendars and are sets; an empty one is as good as none.
    settings.removeIf([](const std::pair<const QString &, PreferenceValue &> &setting) {
        auto *list = std::get_if<QStringList>(&setting.second);
        if (list)
            list->sort();
        return list && list->isEmpty();
    });
    return settings;
}

std::optional<PlannerState> storedState(const Preferences &preferences)
{
    PlannerState state;
    const bool hasData = decodeInto(state.data, preferences, keys::storageKey, decodeSavedData) ||
                         decodeInto(state.data, preferences, keys::backupStorageKey, decodeSavedData);
    if (!hasData || !decodeInto(state.feeds, preferences, keys::calendarFeedsKey, decodeCalendarFeeds) ||
        !decodeInto(state.library, preferences, keys::documentMetadataKey, decodeDocumentLibrary))
        return std::nullopt;
    state.settings = restorableSettings(preferences);
    return state;
}

} // namespace tessaly

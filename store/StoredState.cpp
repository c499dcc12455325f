#include "store/StoredState.h"

#include "model/AppLanguage.h"
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
    if (!decoded)
        return false;
    value = *std::move(decoded);
    return true;
}

} // namespace

QMap<QString, PreferenceValue> restorableSettings(const Preferences &preferences)
{
    // What was never stored has its default, so that there is no difference between the two.
    QMap<QString, PreferenceValue> settings{{keys::preferredName, QString()},
                                            {keys::interfaceLanguage, rawValue(AppLanguage::Chinese)},
                                            {keys::appearanceMode, QStringLiteral("system")},
                                            {keys::displayStartHour, qint64{0}},
                                            {keys::displayEndHour, qint64{24}},
                                            {keys::automaticCalendarSync, true},
                                            {keys::selectedCalendarIDs, QStringList()},
                                            {keys::visibleCalendarIDs, QStringList()},
                                            {keys::leadMinutes, QStringList()},
                                            {keys::firstWeekday, qint64{0}},
                                            {keys::hidesWeekend, false},
                                            {keys::showsWeekNumbers, false},
                                            {keys::hasAllDayRow, false},
                                            {keys::marksHiddenTimes, false},
                                            {keys::showsChineseCalendar, false},
                                            {keys::roundsTaps, false}};
    settings.insert(storedSettings(preferences));
    for (PreferenceValue &value : settings) {
        // Those that name calendars are sets.
        if (auto *list = std::get_if<QStringList>(&value))
            list->sort();
    }
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

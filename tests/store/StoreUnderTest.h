#pragma once

#include "model/RecordCodec.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "tests/store/FakePorts.h"

#include <memory>

namespace tessaly {

/// A planner over fakes. Prepare the fakes, then start().
struct StoreUnderTest : FakePorts
{
    std::unique_ptr<PlannerStore> store;

    PlannerStore &start()
    {
        store.reset();
        store = std::make_unique<PlannerStore>(ports());
        return *store;
    }

    /// A start in English, for tests of messages.
    PlannerStore &startInEnglish()
    {
        put(keys::interfaceLanguage, QStringLiteral("en"));
        return start();
    }

    void put(const QString &key, const PreferenceValue &value) { (void)preferences.setValue(key, value); }

    /// What a start would find under the key.
    [[nodiscard]] std::optional<SavedData> saved(const QString &key = keys::storageKey) const
    {
        const std::optional<QByteArray> blob = preferences.get<QByteArray>(key);
        return blob ? decodeSavedData(*blob) : std::nullopt;
    }

    /// The documents of the store.
    [[nodiscard]] DocumentLibrary &library() const { return store->documentLibrary(); }

    /// The message on the status line; empty when there is none.
    [[nodiscard]] QString message() const { return store->calendarSyncMessage().value_or(QString()); }
};

inline ScheduleItem scheduleTitled(const QString &title, double start = 800'000'000)
{
    return {.title = title, .date = {start}};
}

} // namespace tessaly

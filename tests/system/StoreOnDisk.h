#pragma once

#include "platform/common/SqlitePreferences.h"
#include "store/PlannerStore.h"
#include "tests/store/FakePorts.h"

namespace tessaly {

/// The real store on the real preferences; only what has nothing to do with saving is fake.
class StoreOnDisk
{
public:
    explicit StoreOnDisk(std::unique_ptr<SqlitePreferences> preferences)
        : m_preferences(std::move(preferences)), m_store(m_fakes.portsOver(*m_preferences))
    {
    }

    /// With a real calendar service, which must outlive it.
    StoreOnDisk(std::unique_ptr<SqlitePreferences> preferences, EventStore &service)
        : m_preferences(std::move(preferences)), m_store(m_fakes.portsOver(*m_preferences, service))
    {
    }

    [[nodiscard]] PlannerStore &store() { return m_store; }
    [[nodiscard]] SqlitePreferences &preferences() { return *m_preferences; }

private:
    std::unique_ptr<SqlitePreferences> m_preferences;
    FakePorts m_fakes;
    PlannerStore m_store;
};

} // namespace tessaly

#pragma once

#include "platform/common/LocalFileSystem.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/common/ZipArchives.h"
#include "store/PlannerStore.h"
#include "tests/store/FakePorts.h"

namespace tessaly {

/// The real store on a real data directory: preferences, documents and archives. Services of the desktop are fake.
class PlannerOnDisk
{
public:
    /// Null where the preferences cannot be opened.
    [[nodiscard]] static std::unique_ptr<PlannerOnDisk> open(const QString &directory)
    {
        auto preferences = SqlitePreferences::open(directory);
        if (!preferences)
            return nullptr;
        return std::unique_ptr<PlannerOnDisk>(new PlannerOnDisk(preferences.takeValue(), directory));
    }

    [[nodiscard]] PlannerStore &store() { return m_store; }

private:
    PlannerOnDisk(std::unique_ptr<SqlitePreferences> preferences, const QString &directory)
        : m_preferences(std::move(preferences)),
          m_store(m_fakes.portsOnDisk(*m_preferences, m_files, m_archives, directory))
    {
    }

    std::unique_ptr<SqlitePreferences> m_preferences;
    LocalFileSystem m_files;
    ZipArchives m_archives;
    FakePorts m_fakes;
    PlannerStore m_store;
};

} // namespace tessaly

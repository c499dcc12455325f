#pragma once

#include "platform/common/SqlitePreferences.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationCenter.h"
#include "store/PlannerStore.h"

namespace tessaly {

/// The real store on the real preferences; only what has nothing to do with saving is fake.
class StoreOnDisk
{
public:
    explicit StoreOnDisk(std::unique_ptr<SqlitePreferences> preferences)
        : m_preferences(std::move(preferences)),
          m_store({*m_preferences, m_eventStore, m_notificationCenter, m_loginItem, m_feedDownloader, m_clock,
                   UserCalendar(QTimeZone::utc(), Qt::Monday, QLocale::c()), m_files, QStringLiteral("/documents")})
    {
    }

    [[nodiscard]] PlannerStore &store() { return m_store; }
    [[nodiscard]] SqlitePreferences &preferences() { return *m_preferences; }

private:
    std::unique_ptr<SqlitePreferences> m_preferences;
    FakeEventStore m_eventStore;
    FakeNotificationCenter m_notificationCenter;
    FakeLoginItem m_loginItem;
    FakeFeedDownloader m_feedDownloader;
    FakeFileSystem m_files;
    FakeClock m_clock{Instant{0}};
    PlannerStore m_store;
};

} // namespace tessaly

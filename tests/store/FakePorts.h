#pragma once

#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationCenter.h"
#include "platform/fake/FakePreferences.h"
#include "store/PlannerPorts.h"

namespace tessaly {

/// A system in memory, in Vienna.
struct FakePorts
{
    FakePreferences preferences;
    FakeEventStore eventStore;
    FakeNotificationCenter notificationCenter;
    FakeLoginItem loginItem;
    FakeFeedDownloader feedDownloader;
    FakeFileSystem files;
    UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
    FakeClock clock{Instant::fromUnixSeconds(1'780'000'000)};

    [[nodiscard]] PlannerPorts ports() { return portsOver(preferences, feedDownloader); }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored) { return portsOver(stored, feedDownloader); }
    [[nodiscard]] PlannerPorts portsOver(FeedDownloader &downloader) { return portsOver(preferences, downloader); }
    /// Documents in a real folder.
    [[nodiscard]] PlannerPorts portsOver(FileSystem &disk, const QString &folder)
    {
        return {preferences,
                eventStore,
                notificationCenter,
                loginItem,
                feedDownloader,
                clock,
                calendar,
                disk,
                folder,
                folder + QStringLiteral("/../Drafts")};
    }

private:
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored, FeedDownloader &downloader)
    {
        return {stored,
                eventStore,
                notificationCenter,
                loginItem,
                downloader,
                clock,
                calendar,
                files,
                QStringLiteral("/documents"),
                QStringLiteral("/drafts")};
    }
};

} // namespace tessaly

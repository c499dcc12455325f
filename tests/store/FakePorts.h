#pragma once

#include "platform/fake/FakeArchives.h"
#include "platform/fake/FakeBackups.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationPresenter.h"
#include "platform/fake/FakePreferences.h"
#include "store/PlannerPorts.h"

namespace tessaly {

/// A system in memory, in Vienna.
struct FakePorts
{
    FakePreferences preferences;
    FakeEventStore eventStore;
    FakeNotificationPresenter notificationPresenter;
    FakeLoginItem loginItem;
    FakeLoginItem reminderLoginItem;
    FakeFeedDownloader feedDownloader;
    FakeFileSystem files;
    FakeArchives archives;
    FakeBackups backups{preferences};
    UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
    FakeClock clock{Instant::fromUnixSeconds(1'780'000'000)};

    [[nodiscard]] PlannerPorts ports() { return portsOver(preferences); }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored)
    {
        return portsOver(stored, feedDownloader, notificationPresenter);
    }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored, EventStore &service)
    {
        return portsOver(stored, feedDownloader, notificationPresenter, service);
    }
    [[nodiscard]] PlannerPorts portsOver(FeedDownloader &downloader)
    {
        return portsOver(preferences, downloader, notificationPresenter);
    }
    [[nodiscard]] PlannerPorts portsOver(NotificationPresenter &presenter)
    {
        return portsOver(preferences, feedDownloader, presenter);
    }
    /// Everything in a data directory.
    [[nodiscard]] PlannerPorts portsOnDisk(Preferences &stored, FileSystem &disk, Archives &onDisk,
                                           const QString &directory)
    {
        return {stored,
                eventStore,
                notificationPresenter,
                loginItem,
                reminderLoginItem,
                feedDownloader,
                clock,
                calendar,
                disk,
                directory + QStringLiteral("/Documents"),
                directory + QStringLiteral("/Drafts"),
                directory + QStringLiteral("/Deleted"),
                onDisk,
                directory + QStringLiteral("/Import"),
                backups,
                directory + QStringLiteral("/Versions")};
    }
    /// Documents in a real folder.
    [[nodiscard]] PlannerPorts portsOver(FileSystem &disk, const QString &folder)
    {
        return {preferences,
                eventStore,
                notificationPresenter,
                loginItem,
                reminderLoginItem,
                feedDownloader,
                clock,
                calendar,
                disk,
                folder,
                folder + QStringLiteral("/../Drafts"),
                folder + QStringLiteral("/../Deleted"),
                archives,
                folder + QStringLiteral("/../Import"),
                backups,
                folder + QStringLiteral("/../Versions")};
    }

private:
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored, FeedDownloader &downloader,
                                         NotificationPresenter &presenter)
    {
        return portsOver(stored, downloader, presenter, eventStore);
    }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored, FeedDownloader &downloader,
                                         NotificationPresenter &presenter, EventStore &service)
    {
        return {stored,
                service,
                presenter,
                loginItem,
                reminderLoginItem,
                downloader,
                clock,
                calendar,
                files,
                QStringLiteral("/documents"),
                QStringLiteral("/drafts"),
                QStringLiteral("/deleted"),
                archives,
                QStringLiteral("/import"),
                backups,
                QStringLiteral("/versions")};
    }
};

} // namespace tessaly

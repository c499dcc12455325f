#pragma once

#include "platform/fake/FakeArchives.h"
#include "platform/fake/FakeBackups.h"
#include "platform/fake/FakeCalendarExpander.h"
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

    FakeCalendarExpander calendarExpander;

    [[nodiscard]] PlannerPorts ports() { return portsOver(preferences); }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored) { return portsWith({.preferences = &stored}); }
    [[nodiscard]] PlannerPorts portsOver(Preferences &stored, EventStore &service)
    {
        return portsWith({.preferences = &stored, .eventStore = &service});
    }
    [[nodiscard]] PlannerPorts portsOver(FeedDownloader &downloader)
    {
        return portsWith({.feedDownloader = &downloader});
    }
    [[nodiscard]] PlannerPorts portsOver(NotificationPresenter &presenter)
    {
        return portsWith({.notificationPresenter = &presenter});
    }
    /// Everything in a data directory.
    [[nodiscard]] PlannerPorts portsOnDisk(Preferences &stored, FileSystem &disk, Archives &onDisk,
                                           const QString &directory)
    {
        return portsWith({.preferences = &stored,
                          .files = &disk,
                          .archives = &onDisk,
                          .directory = directory,
                          .documents = directory + QStringLiteral("/Documents")});
    }
    /// Documents in a real folder.
    [[nodiscard]] PlannerPorts portsOver(FileSystem &disk, const QString &folder)
    {
        return portsWith({.files = &disk, .directory = folder + QStringLiteral("/.."), .documents = folder});
    }

    /// What takes the place of a fake; null keeps it.
    struct Others
    {
        Preferences *preferences = nullptr;
        EventStore *eventStore = nullptr;
        NotificationPresenter *notificationPresenter = nullptr;
        FeedDownloader *feedDownloader = nullptr;
        FileSystem *files = nullptr;
        Archives *archives = nullptr;
        CalendarExpander *calendarExpander = nullptr;
        QString directory = {};
        QString documents = QStringLiteral("/documents");
    };
    [[nodiscard]] PlannerPorts portsWith(const Others &others)
    {
        const auto chosen = [](auto *other, auto &fake) -> auto &
        {
            return other ? *other : fake;
        };
        return {chosen(others.preferences, static_cast<Preferences &>(preferences)),
                chosen(others.eventStore, static_cast<EventStore &>(eventStore)),
                chosen(others.notificationPresenter, static_cast<NotificationPresenter &>(notificationPresenter)),
                loginItem,
                reminderLoginItem,
                chosen(others.feedDownloader, static_cast<FeedDownloader &>(feedDownloader)),
                clock,
                calendar,
                chosen(others.files, static_cast<FileSystem &>(files)),
                others.documents,
                others.directory + QStringLiteral("/Drafts"),
                others.directory + QStringLiteral("/Deleted"),
                chosen(others.archives, static_cast<Archives &>(archives)),
                others.directory + QStringLiteral("/Import"),
                backups,
                others.directory + QStringLiteral("/Versions"),
                chosen(others.calendarExpander, static_cast<CalendarExpander &>(calendarExpander))};
    }
};

} // namespace tessaly

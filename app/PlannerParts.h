#pragma once

#include "model/Result.h"
#include "model/UserCalendar.h"
#include "platform/Archives.h"
#include "platform/Backups.h"
#include "platform/CalendarExpander.h"
#include "platform/Clock.h"
#include "platform/EventStore.h"
#include "platform/FeedDownloader.h"
#include "platform/FileSystem.h"
#include "platform/LoginItem.h"
#include "platform/NotificationPresenter.h"
#include "platform/Preferences.h"

#include <QObject>

#include <memory>

namespace tessaly {

class PlannerStore;
struct CommandLine;

/// What becomes of a database that is not there although there are earlier versions of it.
enum class MissingData { Refused, StartsEmpty };

/// The planner store and what it works on, in dependency order: the store goes first when all is taken down.
struct PlannerParts
{
    PlannerParts();
    ~PlannerParts();
    Q_DISABLE_COPY_MOVE(PlannerParts)

    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<Backups> backups;
    std::unique_ptr<EventStore> eventStore;
    std::unique_ptr<NotificationPresenter> notificationPresenter;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<LoginItem> reminderLoginItem;
    std::unique_ptr<FeedDownloader> feedDownloader;
    std::unique_ptr<FileSystem> fileSystem;
    std::unique_ptr<CalendarExpander> calendarExpander;
    QString documentsFolder;
    QString draftsFolder;
    QString versionsFolder;
    QString deletedFolder;
    std::unique_ptr<Archives> archives;
    QString importFolder;
    std::unique_ptr<Clock> clock;
    UserCalendar calendar = UserCalendar::system();
    std::unique_ptr<PlannerStore> store;
    std::unique_ptr<QObject> terminationSignals;

    /// Precondition: all the others are there.
    void makeStore();
};

/// The system's own services, over the data directory, none of which needs a window. Fails where the stored data cannot
/// be opened. Precondition: this process is the only one on the directory.
[[nodiscard]] Result<std::unique_ptr<PlannerParts>> systemParts(const CommandLine &commandLine,
                                                                MissingData missing = MissingData::Refused);

/// Saves what could not be saved before. The end of a session asks no questions, so lost changes are reported on
/// standard error.
void saveOrReportLoss(PlannerStore &store);

} // namespace tessaly

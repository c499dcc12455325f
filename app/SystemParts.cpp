#include "app/CommandLine.h"
#include "app/PlannerParts.h"
#include "platform/common/LibicalExpander.h"
#include "platform/common/LocalFileSystem.h"
#include "platform/common/NetworkFeedDownloader.h"
#include "platform/common/NullEventStore.h"
#include "platform/common/SqliteBackups.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/common/vdir/VdirEventStore.h"
#include "platform/common/ZipArchives.h"
#include "platform/linux/EvolutionEventStore.h"
#include "platform/linux/FreedesktopNotifications.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/TerminationSignals.h"
#include "platform/linux/XdgLoginItem.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <QCoreApplication>
#include <QUuid>

#include <cstdio>
#include <utility>

namespace tessaly {

namespace {

QStringList loginCommand(const CommandLine &commandLine)
{
    QStringList command{commandLine.program, QStringLiteral("--background")};
    if (commandLine.isDataDirectoryGiven)
        command << QStringLiteral("--data-dir") << commandLine.dataDirectory;
    if (commandLine.calendars == CommandLine::Calendars::None)
        command << QStringLiteral("--calendar") << QStringLiteral("none");
    else if (commandLine.calendars == CommandLine::Calendars::Evolution)
        command << QStringLiteral("--calendar") << QStringLiteral("eds");
    else if (commandLine.calendars == CommandLine::Calendars::Directory)
        command << QStringLiteral("--calendar") << QStringLiteral("vdir:") + commandLine.calendarDirectory;
    return command;
}

/// Each data directory has its own entry, because each has its own reminders.
AutostartEntry reminderEntry(const CommandLine &commandLine)
{
    const QUuid mark = QUuid::createUuidV5(QUuid(), commandLine.dataDirectory);
    return {QStringLiteral("tessaly-reminders%1.desktop")
                .arg(commandLine.isDataDirectoryGiven ? u'-' + mark.toString(QUuid::WithoutBraces) : QString()),
            {QStringLiteral("Tessaly 提醒"), QStringLiteral("Tessaly reminders")},
            AutostartEntry::SetBy::Program};
}

std::unique_ptr<EventStore> eventStoreFor(const CommandLine &commandLine, const Preferences &preferences,
                                          const Clock &clock, const UserCalendar &calendar)
{
    const auto title = [&preferences] {
        const QString language = preferences.get<QString>(keys::interfaceLanguage).value_or(QString());
        return appLanguageFromRawValue(language) == AppLanguage::English ? QStringLiteral("Personal")
                                                                         : QStringLiteral("个人");
    };
    switch (commandLine.calendars) {
    case CommandLine::Calendars::None:
        return std::make_unique<NullEventStore>();
    case CommandLine::Calendars::Directory:
        return std::make_unique<VdirEventStore>(VdirPlace::given(commandLine.calendarDirectory), clock);
    case CommandLine::Calendars::Evolution:
        return std::make_unique<EvolutionEventStore>(calendar);
    case CommandLine::Calendars::Automatic:
        if (EvolutionEventStore::isOffered())
            return std::make_unique<EvolutionEventStore>(calendar);
        break;
    }
    return std::make_unique<VdirEventStore>(VdirPlace::embedded(commandLine.dataDirectory, title), clock);
}

} // namespace

PlannerParts::PlannerParts() : calendarExpander(std::make_unique<LibicalExpander>())
{
}

PlannerParts::~PlannerParts() = default;

void PlannerParts::makeStore()
{
    store = std::make_unique<PlannerStore>(
        PlannerPorts{*preferences, *eventStore, *notificationPresenter, *loginItem, *reminderLoginItem, *feedDownloader,
                     *clock, calendar, *fileSystem, documentsFolder, draftsFolder, deletedFolder, *archives,
                     importFolder, *backups, versionsFolder, *calendarExpander});
}

Result<std::unique_ptr<PlannerParts>> systemParts(const CommandLine &commandLine, MissingData missing)
{
    if (missing == MissingData::Refused && SqlitePreferences::isMissing(commandLine.dataDirectory) &&
        SqliteBackups(commandLine.dataDirectory).newestSound())
        return Error{ErrorCode::StorageMissing, {}};
    Result<std::unique_ptr<SqlitePreferences>> preferences = SqlitePreferences::open(commandLine.dataDirectory);
    if (!preferences)
        return preferences.error();
    auto parts = std::make_unique<PlannerParts>();
    auto stored = preferences.takeValue();
    const SqlitePreferences &file = *stored;
    parts->preferences = std::move(stored);
    parts->backups = std::make_unique<SqliteBackups>(commandLine.dataDirectory);
    parts->clock = std::make_unique<LinuxClock>();
    parts->eventStore = eventStoreFor(commandLine, *parts->preferences, *parts->clock, parts->calendar);
    parts->loginItem = std::make_unique<XdgLoginItem>(loginCommand(commandLine));
    parts->reminderLoginItem = std::make_unique<XdgLoginItem>(
        loginCommand(commandLine), XdgLoginItem::userAutostartDirectory(), reminderEntry(commandLine));
    parts->feedDownloader = std::make_unique<NetworkFeedDownloader>();
    parts->fileSystem = std::make_unique<LocalFileSystem>();
    parts->documentsFolder = commandLine.dataDirectory + QStringLiteral("/Documents");
    parts->draftsFolder = commandLine.dataDirectory + QStringLiteral("/Drafts");
    parts->versionsFolder = commandLine.dataDirectory + QStringLiteral("/Versions");
    parts->deletedFolder = commandLine.dataDirectory + QStringLiteral("/Deleted");
    parts->archives = std::make_unique<ZipArchives>();
    parts->importFolder = commandLine.dataDirectory + QStringLiteral("/Import");
    parts->notificationPresenter = std::make_unique<FreedesktopNotifications>(QStringLiteral("tessaly"));
    // The end of a session asks no questions; what can still be saved is saved.
    auto terminationSignals = std::make_unique<TerminationSignals>();
    QObject::connect(terminationSignals.get(), &TerminationSignals::received, QCoreApplication::instance(),
                     [] { QCoreApplication::exit(); });
    parts->terminationSignals = std::move(terminationSignals);
    parts->makeStore();
    // Everything was read by now. Data that could not be read must not look like data that never existed.
    if (file.readFailure())
        return *file.readFailure();
    return parts;
}

void saveOrReportLoss(PlannerStore &store)
{
    store.retryUnsavedChanges();
    if (store.hasUnsavedChanges())
        std::fprintf(stderr, "tessaly: %s\ntessaly: %s\n", "有更改未能保存，已经丢失。",
                     "Changes could not be saved and are lost.");
}

} // namespace tessaly

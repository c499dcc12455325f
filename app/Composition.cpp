#include "app/Composition.h"

#include "app/CommandLine.h"
#include "app/SampleData.h"
#include "model/RecordCodec.h"
#include "model/Uuid.h"
#include "platform/common/LocalFileSystem.h"
#include "platform/common/NetworkFeedDownloader.h"
#include "platform/common/NullEventStore.h"
#include "platform/common/SqliteBackups.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/common/vdir/VdirEventStore.h"
#include "platform/common/ZipArchives.h"
#include "platform/fake/FakeArchives.h"
#include "platform/fake/FakeBackups.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationPresenter.h"
#include "platform/fake/FakePreferences.h"
#include "platform/fake/FakeSystemAppearance.h"
#include "platform/linux/EvolutionEventStore.h"
#include "platform/linux/FreedesktopNotifications.h"
#include "platform/linux/GlobalMenu.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/PortalFileDialogs.h"
#include "platform/linux/TerminationSignals.h"
#include "platform/linux/XdgLoginItem.h"
#include "platform/quick/QuickFileDialogs.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <QGuiApplication>
#include <QUuid>

#include <utility>

namespace tessaly {

/// In dependency order: the store goes first when all is taken down.
struct Composition::Parts
{
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<Backups> backups;
    std::unique_ptr<EventStore> eventStore;
    std::unique_ptr<NotificationPresenter> notificationPresenter;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<LoginItem> reminderLoginItem;
    std::unique_ptr<FeedDownloader> feedDownloader;
    std::unique_ptr<FileSystem> fileSystem;
    QString documentsFolder;
    QString draftsFolder;
    QString versionsFolder;
    QString deletedFolder;
    std::unique_ptr<Archives> archives;
    QString importFolder;
    std::unique_ptr<FileDialogs> fileDialogs =
        std::make_unique<PortalFileDialogs>(std::make_unique<QuickFileDialogs>());
    std::unique_ptr<SystemAppearance> systemAppearance;
    std::unique_ptr<Clock> clock;
    UserCalendar calendar = UserCalendar::system();
    std::unique_ptr<PlannerStore> store;
    std::unique_ptr<TerminationSignals> terminationSignals;
};

namespace {

QStringList loginCommand(const CommandLine &commandLine)
{
    QStringList command{QCoreApplication::applicationFilePath(), QStringLiteral("--background")};
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

Composition::Composition(std::unique_ptr<Parts> parts) : m_parts(std::move(parts))
{
    Parts &p = *m_parts;
    p.store = std::make_unique<PlannerStore>(
        PlannerPorts{*p.preferences, *p.eventStore, *p.notificationPresenter, *p.loginItem, *p.reminderLoginItem,
                     *p.feedDownloader, *p.clock, p.calendar, *p.fileSystem, p.documentsFolder, p.draftsFolder,
                     p.deletedFolder, *p.archives, p.importFolder, *p.backups, p.versionsFolder});
}

Composition::~Composition() = default;

std::optional<Generation> Composition::remedyFor(const Error &error, const CommandLine &commandLine)
{
    const bool isLost = error.code == ErrorCode::StorageCorrupt || error.code == ErrorCode::StorageMissing;
    return isLost ? SqliteBackups(commandLine.dataDirectory).newestSound() : std::nullopt;
}

Result<void> Composition::openEarlier(const Generation &generation, const CommandLine &commandLine)
{
    return SqliteBackups(commandLine.dataDirectory).putBack(generation, LinuxClock().now());
}

Result<std::shared_ptr<Composition>> Composition::forSystem(const CommandLine &commandLine, MissingData missing)
{
    if (missing == MissingData::Refused && SqlitePreferences::isMissing(commandLine.dataDirectory) &&
        SqliteBackups(commandLine.dataDirectory).newestSound())
        return Error{ErrorCode::StorageMissing, {}};
    Result<std::unique_ptr<SqlitePreferences>> preferences = SqlitePreferences::open(commandLine.dataDirectory);
    if (!preferences)
        return preferences.error();
    auto parts = std::make_unique<Parts>();
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
    parts->systemAppearance = std::make_unique<PortalAppearance>();
    parts->notificationPresenter = std::make_unique<FreedesktopNotifications>(QGuiApplication::desktopFileName());
    // The end of a session asks no questions; what can still be saved is saved.
    parts->terminationSignals = std::make_unique<TerminationSignals>();
    QObject::connect(parts->terminationSignals.get(), &TerminationSignals::received, qApp,
                     [] { QCoreApplication::exit(); });
    const std::shared_ptr<Composition> composition(new Composition(std::move(parts)));
    // Everything was read by now. Data that could not be read must not look like data that never existed.
    if (file.readFailure())
        return *file.readFailure();
    return composition;
}

std::shared_ptr<Composition> Composition::forDemo(AppLanguage language, const std::optional<Instant> &now)
{
    auto parts = std::make_unique<Parts>();
    if (now) {
        parts->clock = std::make_unique<FakeClock>(*now);
        parts->calendar = UserCalendar(QTimeZone::utc(), Qt::Sunday, interfaceLocale(language == AppLanguage::English));
    } else {
        parts->clock = std::make_unique<LinuxClock>();
    }
    auto preferences = std::make_unique<FakePreferences>();
    parts->backups = std::make_unique<FakeBackups>(*preferences);
    auto fileSystem = std::make_unique<FakeFileSystem>();
    // lint-allow(papers): a made-up folder for the pictures
    parts->documentsFolder = QStringLiteral("/home/user/.local/share/Tessaly/Documents");
    // lint-allow(papers): likewise
    parts->draftsFolder = QStringLiteral("/home/user/.local/share/Tessaly/Drafts");
    // lint-allow(papers): likewise
    parts->versionsFolder = QStringLiteral("/home/user/.local/share/Tessaly/Versions");
    parts->deletedFolder = QStringLiteral("/home/user/.local/share/Tessaly/Deleted");
    const SampleDocuments documents = sampleDocuments(language, parts->clock->now());
    (void)preferences->setValue(keys::documentMetadataKey,
                                encodeDocumentLibrary(documents.library).value_or(QByteArray()));
    for (auto text = documents.texts.cbegin(); text != documents.texts.cend(); ++text)
        fileSystem->write(parts->documentsFolder + u'/' + uuidText(text.key()) + QStringLiteral(".md"), text->toUtf8());
    parts->fileSystem = std::move(fileSystem);
    const SavedData sample = sampleData(language, parts->calendar, parts->clock->now());
    (void)preferences->setValue(keys::storageKey, encodeSavedData(sample).value_or(QByteArray()));
    (void)preferences->setValue(keys::interfaceLanguage, rawValue(language));
    (void)preferences->setValue(keys::preferredName,
                                language == AppLanguage::English ? QStringLiteral("Friend") : QStringLiteral("朋友"));
    (void)preferences->setValue(keys::hasAskedPreferredName, true);
    // The sample stays as it is until the user asks for a sync.
    (void)preferences->setValue(keys::automaticCalendarSync, now.has_value());
    parts->preferences = std::move(preferences);
    parts->archives = std::make_unique<FakeArchives>();
    auto eventStore = std::make_unique<FakeEventStore>();
    for (const EventCalendar &sample : sampleCalendars(language))
        eventStore->addCalendar(sample);
    parts->eventStore = std::move(eventStore);
    parts->notificationPresenter = std::make_unique<FakeNotificationPresenter>();
    parts->loginItem = std::make_unique<FakeLoginItem>();
    parts->reminderLoginItem = std::make_unique<FakeLoginItem>();
    parts->feedDownloader = std::make_unique<FakeFeedDownloader>();
    if (now)
        parts->systemAppearance = std::make_unique<FakeSystemAppearance>();
    else
        parts->systemAppearance = std::make_unique<PortalAppearance>();
    return std::shared_ptr<Composition>(new Composition(std::move(parts)));
}

PlannerStore &Composition::store() const
{
    return *m_parts->store;
}

bool Composition::hasNativeMenuBar() const
{
    return hasGlobalMenu();
}

void Composition::setReminderHandler(std::function<void(const QString &)> handler)
{
    m_parts->notificationPresenter->setActivationHandler(std::move(handler));
}

Preferences &Composition::preferences() const
{
    return *m_parts->preferences;
}

SystemAppearance &Composition::systemAppearance() const
{
    return *m_parts->systemAppearance;
}

FileDialogs &Composition::fileDialogs() const
{
    return *m_parts->fileDialogs;
}

} // namespace tessaly

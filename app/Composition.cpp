#include "app/Composition.h"

#include "app/CommandLine.h"
#include "app/PlannerParts.h"
#include "app/SampleData.h"
#include "app/SampleLinks.h"
#include "model/RecordCodec.h"
#include "model/Uuid.h"
#include "platform/common/SqliteBackups.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/fake/FakeArchives.h"
#include "platform/fake/FakeBackups.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeGlobalShortcut.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationPresenter.h"
#include "platform/fake/FakePreferences.h"
#include "platform/fake/FakeSystemAppearance.h"
#include "platform/linux/GlobalMenu.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/PortalFileDialogs.h"
#include "platform/linux/PortalGlobalShortcut.h"
#include "platform/quick/QuickFileDialogs.h"
#include "store/DocumentVersions.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <utility>

namespace tessaly {

/// In dependency order.
struct Composition::Parts
{
    std::unique_ptr<FileDialogs> fileDialogs =
        std::make_unique<PortalFileDialogs>(std::make_unique<QuickFileDialogs>());
    std::unique_ptr<SystemAppearance> systemAppearance;
    std::unique_ptr<GlobalShortcut> globalShortcut;
    std::unique_ptr<PlannerParts> planner;
};

Composition::Composition(std::unique_ptr<Parts> parts) : m_parts(std::move(parts))
{
}

Composition::~Composition() = default;

bool Composition::isNothingStored(const CommandLine &commandLine)
{
    return SqlitePreferences::isMissing(commandLine.dataDirectory);
}

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
    auto parts = std::make_unique<Parts>();
    // Asks the desktop, which answers while the data are read.
    parts->systemAppearance = std::make_unique<PortalAppearance>();
    parts->globalShortcut = std::make_unique<PortalGlobalShortcut>();
    auto planner = systemParts(commandLine, missing);
    if (!planner)
        return planner.error();
    parts->planner = planner.takeValue();
    return std::shared_ptr<Composition>(new Composition(std::move(parts)));
}

std::shared_ptr<Composition> Composition::forDemo(AppLanguage language, const std::optional<Instant> &now)
{
    auto parts = std::make_unique<PlannerParts>();
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
    parts->importFolder = QStringLiteral("/home/user/.local/share/Tessaly/Import");
    const SampleDocuments documents = sampleDocuments(language, parts->clock->now());
    (void)preferences->setValue(keys::documentMetadataKey,
                                encodeDocumentLibrary(documents.library).value_or(QByteArray()));
    for (auto text = documents.texts.cbegin(); text != documents.texts.cend(); ++text)
        fileSystem->write(parts->documentsFolder + u'/' + uuidText(text.key()) + QStringLiteral(".md"), text->toUtf8());
    DocumentVersions versions(*fileSystem, parts->versionsFolder);
    for (const auto &former : documents.formerTexts)
        versions.keep(former.documentID, former.since, former.text.toUtf8());
    parts->fileSystem = std::move(fileSystem);
    const SavedData sample = sampleData(language, parts->calendar, parts->clock->now());
    (void)preferences->setValue(keys::storageKey, encodeSavedData(sample).value_or(QByteArray()));
    (void)preferences->setValue(keys::interfaceLanguage, rawValue(language));
    (void)preferences->setValue(keys::preferredName,
                                language == AppLanguage::English ? QStringLiteral("Friend") : QStringLiteral("朋友"));
    (void)preferences->setValue(keys::hasAskedPreferredName, true);
    // The sample has schedules of whole days, which fill the columns otherwise.
    (void)preferences->setValue(keys::hasAllDayRow, true);
    if (now) {
        const SampleLinks links = sampleLinks(language, *now);
        (void)preferences->setValue(keys::calendarFeedsKey, encodeCalendarFeeds(links.feeds).value_or(QByteArray()));
        (void)preferences->setValue(keys::linkHealth, encodeLinkHealth(links.health));
    }
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
    auto feedDownloader = std::make_unique<FakeFeedDownloader>();
    feedDownloader->answerAllWith({.body = sampleTimetable(language)});
    parts->feedDownloader = std::move(feedDownloader);
    parts->makeStore();
    auto all = std::make_unique<Parts>();
    all->globalShortcut = std::make_unique<FakeGlobalShortcut>();
    if (now)
        all->systemAppearance = std::make_unique<FakeSystemAppearance>();
    else
        all->systemAppearance = std::make_unique<PortalAppearance>();
    all->planner = std::move(parts);
    return std::shared_ptr<Composition>(new Composition(std::move(all)));
}

PlannerStore &Composition::store() const
{
    return *m_parts->planner->store;
}

bool Composition::hasNativeMenuBar() const
{
    return hasGlobalMenu();
}

void Composition::setReminderHandler(std::function<void(const QString &)> handler)
{
    m_parts->planner->notificationPresenter->setActivationHandler(std::move(handler));
}

Preferences &Composition::preferences() const
{
    return *m_parts->planner->preferences;
}

SystemAppearance &Composition::systemAppearance() const
{
    return *m_parts->systemAppearance;
}

GlobalShortcut &Composition::globalShortcut() const
{
    return *m_parts->globalShortcut;
}

FileDialogs &Composition::fileDialogs() const
{
    return *m_parts->fileDialogs;
}

} // namespace tessaly

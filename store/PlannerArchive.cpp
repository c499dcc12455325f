#include "store/PlannerArchive.h"

#include "model/StateDifference.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "store/ArchiveContents.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <QFileInfo>
#include <QPointer>

namespace tessaly {

namespace {

QMap<QString, SettingChange> settingDifferences(const QMap<QString, PreferenceValue> &before,
                                                const QMap<QString, PreferenceValue> &after)
{
    const auto valueIn = [](const QMap<QString, PreferenceValue> &settings, const QString &key) {
        const auto found = settings.constFind(key);
        return found == settings.cend() ? std::nullopt : std::optional(*found);
    };
    QMap<QString, SettingChange> changes;
    for (const QString &key : before.keys() + after.keys()) {
        const SettingChange change{valueIn(before, key), valueIn(after, key)};
        if (change.before != change.after)
            changes.insert(key, change);
    }
    return changes;
}

} // namespace

PlannerArchive::PlannerArchive(PlannerStore &store, const PlannerPorts &ports, StoredValues &values)
    : m_store(store), m_ports(ports), m_values(values)
{
}

ArchiveContents PlannerArchive::contents() const
{
    const DocumentLibrary &library = m_store.documentLibrary();
    return {.data = m_store.data(),
            .library = {library.documentCategories(), library.documents()},
            .feeds = m_store.calendarFeeds(),
            .settings = storedSettings(m_ports.preferences)};
}

void PlannerArchive::write(const QString &path, const Completion &completion)
{
    const Result<QList<ArchiveEntry>> entries = archiveEntries(
        contents(), m_ports.fileSystem, m_store.documentLibrary().documentSaveLocation(), m_ports.clock.now());
    if (entries)
        m_ports.archives.write(path, entries.value(), completion);
    else
        completion(entries.error());
}

void PlannerArchive::read(const QString &path, const Completion &completion)
{
    m_values.retry();
    if (m_values.hasUnsaved() || !importedFiles().isEmpty()) {
        completion(Error{ErrorCode::StorageUnwritable});
        return;
    }
    m_ports.archives.extract(path, m_ports.importFolder,
                             [self = QPointer(this), completion](const Result<void> &extracted) {
                                 if (self)
                                     completion(extracted ? self->takeExtracted() : extracted);
                             });
}

Result<void> PlannerArchive::takeExtracted()
{
    const Result<ArchiveContents> contents = readArchive(m_ports.fileSystem, m_ports.importFolder);
    const Result<void> taken = contents ? take(contents.value()) : contents.error();
    if (taken)
        moveFiles();
    else
        m_ports.fileSystem.removeFolder(m_ports.importFolder);
    return taken;
}

Result<void> PlannerArchive::take(const ArchiveContents &imported)
{
    const ArchiveContents current = contents();
    StateChange change{.schedules = differences(current.data.schedules, imported.data.schedules),
                       .reminders = differences(current.data.reminders, imported.data.reminders),
                       .goals = differences(current.data.goals, imported.data.goals),
                       .feeds = differences(current.feeds, imported.feeds),
                       .categories = differences(current.library.categories, imported.library.categories),
                       .documents = differences(current.library.documents, imported.library.documents),
                       .settings = settingDifferences(current.settings, imported.settings),
                       .leavesCalendars = true};
    m_store.documentLibrary().listRemoved(change);
    m_store.generations().keepBefore(GenerationReason::Import);
    const QStringList files = m_ports.fileSystem.filesBeneath(m_ports.importFolder + documentsInArchive);
    for (const QString &name : files)
        m_store.documentLibrary().keepReplaced(importedFile(name), name);
    std::optional<Error> failure;
    const QMetaObject::Connection watching =
        connect(&m_values, &StoredValues::failed, this, [&failure](const Error &error) { failure = error; });
    StateChange done;
    m_values.together([&] {
        m_values.save(keys::importedFiles, files);
        done = m_store.perform(change, TextPair{QStringLiteral("导入"), QStringLiteral("Import")});
    });
    disconnect(watching);
    if (!failure)
        return {};
    // What is only in memory would be half of it after a crash.
    if (!done.isEmpty()) {
        m_store.undo();
        (void)m_store.history().takeRedo();
    }
    m_values.save(keys::importedFiles, QStringList());
    return *failure;
}

QString PlannerArchive::importedFile(const QString &name) const
{
    return m_ports.importFolder + documentsInArchive + u'/' + name;
}

QStringList PlannerArchive::importedFiles() const
{
    return m_ports.preferences.get<QStringList>(keys::importedFiles).value_or(QStringList());
}

void PlannerArchive::finish()
{
    if (!importedFiles().isEmpty() || m_ports.fileSystem.canOpen(m_ports.importFolder))
        moveFiles();
}

void PlannerArchive::moveFiles()
{
    const QStringList names = importedFiles();
    bool isComplete = true;
    for (const QString &name : names) {
        const QString source = importedFile(name);
        if (m_ports.fileSystem.exists(source))
            isComplete = m_store.documentLibrary().takeFile(source, name) && isComplete;
    }
    // What found no room is tried again at the next start.
    if (!isComplete)
        return;
    // First the note, then what it is about: the files of a later import must not be taken for those of this one.
    if (!names.isEmpty())
        m_values.save(keys::importedFiles, QStringList());
    m_ports.fileSystem.removeFolder(m_ports.importFolder);
}

} // namespace tessaly

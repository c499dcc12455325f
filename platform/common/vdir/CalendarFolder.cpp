#include "platform/common/vdir/CalendarFolder.h"

#include "platform/common/LocalFileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <dirent.h>
#include <sys/stat.h>

namespace tessaly {

namespace {

constexpr qint64 nanoseconds = 1'000'000'000;
/// Two writes within it may look alike: the coarsest clock of a file system in use.
constexpr qint64 settlingNanoseconds = 2 * nanoseconds;
/// A draft this old is not being written any more.
constexpr qint64 abandonedNanoseconds = 60 * nanoseconds;
constexpr const char *draftPrefix = ".tessaly-";
constexpr const char *draftSuffix = ".tmp";
constexpr qsizetype longestTitle = 200;

qint64 nanosecondsOf(const timespec &time)
{
    return qint64{time.tv_sec} * nanoseconds + time.tv_nsec;
}

qint64 fileClockNow()
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanosecondsOf(now);
}

Instant instantOf(qint64 unixSeconds)
{
    return Instant::fromUnixSeconds(static_cast<double>(unixSeconds));
}

QString identifierOf(const EventCalendar &calendar, const QString &uid, const QByteArray &original)
{
    const QString identifier = calendar.identifier + u'/' + QString::fromLatin1(QUrl::toPercentEncoding(uid, "@{} "));
    return original.isEmpty() ? identifier : identifier + u'/' + QString::fromLatin1(original);
}

CalendarEvent asEvent(const EventCalendar &calendar, const QString &uid, const EventOccurrence &occurrence)
{
    return {.eventIdentifier = identifierOf(calendar, uid, occurrence.original),
            .calendarIdentifier = calendar.identifier,
            .uid = uid,
            .title = occurrence.part->title,
            .startDate = instantOf(occurrence.start),
            .endDate = instantOf(occurrence.end),
            .notes = occurrence.part->notes};
}

} // namespace

qint64 CalendarMoment::horizon() const
{
    constexpr qint64 day = 86400;
    return now / day * day + 3652 * day;
}

std::optional<QList<QByteArray>> entriesOf(const QString &path)
{
    DIR *folder = ::opendir(QFile::encodeName(path).constData());
    if (!folder)
        return std::nullopt;
    QList<QByteArray> names;
    errno = 0;
    while (const dirent *entry = ::readdir(folder))
        names.append(entry->d_name);
    const bool isWhole = errno == 0;
    ::closedir(folder);
    return isWhole ? std::optional(names) : std::nullopt;
}

bool replaceEvent(const QString &path, const QByteArray &text, const std::function<bool()> &isWanted)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString draft = QLatin1String(draftPrefix) + id + QLatin1String(draftSuffix);
    return replaceFile(path, text, isWanted, draft);
}

CalendarFolder::CalendarFolder(const QString &path, EventZones &zones, FolderWork &work)
    : m_path(path), m_zones(zones), m_work(work)
{
}

void CalendarFolder::readInfo(const QString &identifier, const QString &accountTitle)
{
    const LocalFileSystem files;
    const auto line = [&](const QString &name) {
        const QByteArray text = files.read(m_path + u'/' + name).value_or(QByteArray());
        return QString::fromUtf8(text.split('\n').constFirst()).trimmed().left(longestTitle);
    };
    m_info = {.identifier = identifier,
              .title = line(QStringLiteral("displayname")),
              .sourceTitle = accountTitle,
              // Some programs add two digits for the opacity.
              .color = colorFromHex(line(QStringLiteral("color")).left(7)),
              .isWritable = QFileInfo(m_path).isWritable()};
    if (m_info.title.isEmpty())
        m_info.title = QFileInfo(m_path).fileName();
}

std::optional<CalendarFolder::FileState> CalendarFolder::stateOf(const QString &path)
{
    struct stat state = {};
    if (::stat(QFile::encodeName(path).constData(), &state) != 0 || !S_ISREG(state.st_mode))
        return std::nullopt;
    return FileState{.size = state.st_size,
                     .modified = nanosecondsOf(state.st_mtim),
                     .changed = nanosecondsOf(state.st_ctim),
                     .node = state.st_ino};
}

/// A draft whose writer was killed. Another planner may be about to finish one that is young.
void CalendarFolder::removeAbandoned(const QString &draft)
{
    const std::optional<FileState> state = stateOf(draft);
    if (state && fileClockNow() - state->modified > abandonedNanoseconds)
        QFile::remove(draft);
}

bool CalendarFolder::readEvents()
{
    const bool wasReadable = m_isReadable;
    const std::optional<QList<QByteArray>> names = entriesOf(m_path);
    m_isReadable = names.has_value();
    bool hasChanged = m_isReadable != wasReadable;
    if (!names)
        return hasChanged;
    QSet<QString> present;
    for (const QByteArray &encodedName : *names) {
        if (m_work.isEnding)
            return hasChanged;
        if (encodedName.startsWith(draftPrefix) && encodedName.endsWith(draftSuffix))
            removeAbandoned(m_path + u'/' + QFile::decodeName(encodedName));
        if (encodedName.startsWith('.') || !encodedName.endsWith(".ics"))
            continue;
        const QString name = QFile::decodeName(encodedName);
        const std::optional<FileState> state = stateOf(m_path + u'/' + name);
        if (!state)
            continue;
        present.insert(name);
        ++m_work.eventsRead;
        hasChanged |= mirrorFile(name, *state);
    }
    QStringList gone;
    for (const auto &[name, file] : m_files) {
        if (!present.contains(name))
            gone.append(name);
    }
    for (const QString &name : gone)
        forget(name);
    return hasChanged || !gone.isEmpty();
}

bool CalendarFolder::mirrorFile(const QString &name, const FileState &state)
{
    const auto mirrored = m_files.find(name);
    if (mirrored != m_files.end() && mirrored->second.isSettled && mirrored->second.state == state)
        return false;
    if (state.size > largestFile)
        return mirrorText(name, state, std::nullopt);
    return mirrorText(name, state, LocalFileSystem().read(m_path + u'/' + name));
}

bool CalendarFolder::mirrorText(const QString &name, const FileState &state, const std::optional<QByteArray> &text)
{
    const size_t hash = text ? qHash(*text) : 0;
    const bool isSettled = fileClockNow() - std::max(state.modified, state.changed) > settlingNanoseconds;
    const auto mirrored = m_files.find(name);
    if (mirrored != m_files.end() && mirrored->second.hash == hash) {
        mirrored->second.state = state;
        mirrored->second.isSettled = isSettled;
        return false;
    }
    forget(name);
    MirroredFile &fresh = m_files[name];
    std::optional<QList<FileEvent>> events = text ? readCalendarFile(*text, name, m_zones) : std::nullopt;
    fresh = {.state = state,
             .isSettled = isSettled,
             .hash = hash,
             .isDamaged = !events,
             .events = std::move(events).value_or(QList<FileEvent>())};
    for (const FileEvent &event : std::as_const(fresh.events)) {
        QStringList &names = m_filesByUid[event.uid];
        names.insert(std::ranges::lower_bound(names, name), name);
    }
    return true;
}

void CalendarFolder::mirrorWritten(const QString &fileName, const QByteArray &text)
{
    mirrorText(fileName, stateOf(m_path + u'/' + fileName).value_or(FileState()), text);
}

void CalendarFolder::forget(const QString &fileName)
{
    const auto file = m_files.find(fileName);
    if (file == m_files.end())
        return;
    for (const FileEvent &event : std::as_const(file->second.events)) {
        const auto names = m_filesByUid.find(event.uid);
        names->removeOne(fileName);
        if (names->isEmpty())
            m_filesByUid.erase(names);
    }
    m_files.erase(file);
}

std::optional<QString> CalendarFolder::fileWith(const QString &uid) const
{
    const auto names = m_filesByUid.constFind(uid);
    return names == m_filesByUid.cend() ? std::nullopt : std::optional(names->constFirst());
}

std::optional<CalendarEvent> CalendarFolder::find(const EventKey &key, const CalendarMoment &moment)
{
    const std::optional<QString> name = fileWith(key.uid);
    if (!name)
        return std::nullopt;
    const PatchContext context{.user = moment.user, .zones = m_zones, .horizon = moment.horizon()};
    const auto occurrence = findOccurrence(m_files[*name].events, key, context);
    return occurrence ? std::optional(asEvent(m_info, key.uid, *occurrence)) : std::nullopt;
}

std::optional<CalendarEvent> CalendarFolder::findFirst(const QString &uid, const CalendarMoment &moment)
{
    const std::optional<QString> name = fileWith(uid);
    if (!name)
        return std::nullopt;
    for (FileEvent &event : m_files[*name].events) {
        if (event.uid != uid || !event.expand(moment.horizon()))
            continue;
        const std::vector<EventOccurrence> all = event.occurrences(moment.user);
        if (!all.empty())
            return asEvent(m_info, uid, all.front());
    }
    return std::nullopt;
}

void CalendarFolder::fetch(qint64 from, qint64 to, const CalendarMoment &moment, FetchedEvents &fetched)
{
    QStringList damaged;
    for (auto &[name, file] : m_files) {
        bool isWhole = !file.isDamaged;
        for (FileEvent &event : file.events) {
            if (m_work.isEnding)
                return;
            // The events of a second file with this UID could not be told apart from those of the first.
            if (fileWith(event.uid) != name || !event.expand(moment.horizon())) {
                isWhole = false;
                continue;
            }
            for (const EventOccurrence &occurrence : event.occurrences(moment.user)) {
                const bool overlaps =
                    occurrence.start < to &&
                    (occurrence.end > from || (occurrence.start == occurrence.end && occurrence.start >= from));
                if (overlaps)
                    fetched.events.append(asEvent(m_info, event.uid, occurrence));
            }
        }
        if (!isWhole)
            damaged.append(name);
    }
    if (!damaged.isEmpty())
        fetched.unread.append(
            {.identifier = m_info.identifier, .reason = UnreadCalendar::Reason::DamagedFiles, .files = damaged});
}

} // namespace tessaly

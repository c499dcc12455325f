#include "platform/common/vdir/CalendarFolders.h"

#include "platform/common/LocalFileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

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
constexpr qsizetype longestTitle = 200;
constexpr int mostAttempts = 20;
const QString extension = QStringLiteral(".ics");
const QString firstFolder = QStringLiteral("personal");

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

QString encoded(const QString &piece)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(piece, "@{} "));
}

QString identifierOf(const EventCalendar &calendar, const QString &uid, const QByteArray &original)
{
    const QString identifier = calendar.identifier + u'/' + encoded(uid);
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

QString fileNameFor(const QString &uid)
{
    const QString name = QString::fromLatin1(QUrl::toPercentEncoding(uid));
    constexpr qsizetype longestName = 120;
    if (name.isEmpty() || name.startsWith(u'.') || name.size() > longestName)
        return QStringLiteral("event-%1").arg(qHash(uid), 0, 16) + extension;
    return name + extension;
}

/// What can be listed in a folder; nothing where it cannot be listed to its end.
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

} // namespace

qint64 CalendarMoment::horizon() const
{
    constexpr qint64 day = 86400;
    return now / day * day + 3652 * day;
}

CalendarFolders::CalendarFolders(const QString &directory, const QString &identifierPrefix, const QString &accountTitle,
                                 const std::atomic_bool &isEnding)
    : m_directory(directory), m_identifierPrefix(identifierPrefix), m_accountTitle(accountTitle), m_isEnding(isEnding)
{
}

EventCalendar CalendarFolders::infoOf(const QString &folder) const
{
    const QString path = m_directory + u'/' + folder;
    const LocalFileSystem files;
    const auto line = [&](const QString &name) {
        const QByteArray text = files.read(path + u'/' + name).value_or(QByteArray());
        return QString::fromUtf8(text.split('\n').constFirst()).trimmed().left(longestTitle);
    };
    EventCalendar info{.identifier = m_identifierPrefix + folder,
                       .title = line(QStringLiteral("displayname")),
                       .sourceTitle = m_accountTitle,
                       // Some programs add two digits for the opacity.
                       .color = colorFromHex(line(QStringLiteral("color")).left(7)),
                       .isWritable = QFileInfo(path).isWritable()};
    if (info.title.isEmpty())
        info.title = folder;
    return info;
}

bool CalendarFolders::readCalendars()
{
    const std::optional<QList<QByteArray>> names = entriesOf(m_directory);
    std::map<QString, MirroredCalendar> found;
    for (const QByteArray &encodedName : names.value_or(QList<QByteArray>())) {
        const QString name = QFile::decodeName(encodedName);
        if (name.startsWith(u'.') || !QFileInfo(m_directory + u'/' + name).isDir())
            continue;
        const auto former = m_calendars.find(name);
        if (former != m_calendars.end())
            found[name] = std::move(former->second);
        found[name].info = infoOf(name);
        found[name].path = m_directory + u'/' + name;
    }
    m_calendars = std::move(found);
    return names.has_value();
}

bool CalendarFolders::makeFirstCalendar(const QString &title)
{
    if (!makePrivateFolder(m_directory) || !readCalendars())
        return false;
    if (!m_calendars.empty())
        return true;
    const QString path = m_directory + u'/' + firstFolder;
    return makePrivateFolder(path) && replaceFile(path + QStringLiteral("/displayname"), title.toUtf8()) &&
           readCalendars();
}

QList<EventCalendar> CalendarFolders::calendars() const
{
    QList<EventCalendar> result;
    for (const auto &[name, calendar] : m_calendars) {
        // New events go to the first.
        if (name == firstFolder)
            result.prepend(calendar.info);
        else
            result.append(calendar.info);
    }
    return result;
}

QStringList CalendarFolders::folders() const
{
    QStringList result{m_directory};
    for (const auto &[name, calendar] : m_calendars)
        result.append(calendar.path);
    return result;
}

std::optional<CalendarFolders::FileState> CalendarFolders::stateOf(const QString &path)
{
    struct stat state = {};
    if (::stat(QFile::encodeName(path).constData(), &state) != 0 || !S_ISREG(state.st_mode))
        return std::nullopt;
    return FileState{.size = state.st_size,
                     .modified = nanosecondsOf(state.st_mtim),
                     .changed = nanosecondsOf(state.st_ctim),
                     .node = state.st_ino};
}

bool CalendarFolders::readEvents()
{
    const QList<EventCalendar> before = calendars();
    readCalendars();
    bool hasChanged = calendars() != before;
    for (auto &[name, calendar] : m_calendars)
        hasChanged |= readEvents(calendar);
    return hasChanged;
}

bool CalendarFolders::readEvents(MirroredCalendar &calendar)
{
    const bool wasReadable = calendar.isReadable;
    const std::optional<QList<QByteArray>> names = entriesOf(calendar.path);
    calendar.isReadable = names.has_value();
    bool hasChanged = calendar.isReadable != wasReadable;
    if (!names)
        return hasChanged;
    QSet<QString> present;
    for (const QByteArray &encodedName : *names) {
        if (m_isEnding)
            return hasChanged;
        if (encodedName.startsWith('.') || !encodedName.endsWith(".ics"))
            continue;
        const QString name = QFile::decodeName(encodedName);
        const std::optional<FileState> state = stateOf(calendar.path + u'/' + name);
        if (!state)
            continue;
        present.insert(name);
        hasChanged |= mirrorFile(calendar, name, *state);
    }
    QStringList gone;
    for (const auto &[name, file] : calendar.files) {
        if (!present.contains(name))
            gone.append(name);
    }
    for (const QString &name : gone)
        forget(calendar, name);
    return hasChanged || !gone.isEmpty();
}

bool CalendarFolders::mirrorFile(MirroredCalendar &calendar, const QString &name, const FileState &state)
{
    const auto mirrored = calendar.files.find(name);
    if (mirrored != calendar.files.end() && mirrored->second.isSettled && mirrored->second.state == state)
        return false;
    if (state.size > largestFile)
        return mirrorText(calendar, name, state, std::nullopt);
    return mirrorText(calendar, name, state, LocalFileSystem().read(calendar.path + u'/' + name));
}

bool CalendarFolders::mirrorText(MirroredCalendar &calendar, const QString &name, const FileState &state,
                                 const std::optional<QByteArray> &text)
{
    const size_t hash = text ? qHash(*text) : 0;
    const bool isSettled = fileClockNow() - std::max(state.modified, state.changed) > settlingNanoseconds;
    const auto mirrored = calendar.files.find(name);
    if (mirrored != calendar.files.end() && mirrored->second.hash == hash) {
        mirrored->second.state = state;
        mirrored->second.isSettled = isSettled;
        return false;
    }
    forget(calendar, name);
    MirroredFile &fresh = calendar.files[name];
    std::optional<QList<FileEvent>> events = text ? readCalendarFile(*text, name, m_zones) : std::nullopt;
    fresh = {.state = state,
             .isSettled = isSettled,
             .hash = hash,
             .isDamaged = !events,
             .events = std::move(events).value_or(QList<FileEvent>())};
    for (const FileEvent &event : std::as_const(fresh.events)) {
        QStringList &names = calendar.filesByUid[event.uid];
        names.insert(std::ranges::lower_bound(names, name), name);
    }
    return true;
}

void CalendarFolders::forget(MirroredCalendar &calendar, const QString &name)
{
    const auto file = calendar.files.find(name);
    if (file == calendar.files.end())
        return;
    for (const FileEvent &event : std::as_const(file->second.events)) {
        const auto names = calendar.filesByUid.find(event.uid);
        names->removeOne(name);
        if (names->isEmpty())
            calendar.filesByUid.erase(names);
    }
    calendar.files.erase(file);
}

void CalendarFolders::fetchFrom(MirroredCalendar &calendar, qint64 from, qint64 to, const CalendarMoment &moment,
                                FetchedEvents &fetched)
{
    QStringList damaged;
    for (auto &[name, file] : calendar.files) {
        bool isWhole = !file.isDamaged;
        for (FileEvent &event : file.events) {
            if (m_isEnding)
                return;
            // A second file with the event has nothing that could be told from the first.
            if (calendar.filesByUid.value(event.uid).constFirst() != name || !event.expand(moment.horizon())) {
                isWhole = false;
                continue;
            }
            for (const EventOccurrence &occurrence : event.occurrences(moment.user)) {
                const bool overlaps =
                    occurrence.start < to &&
                    (occurrence.end > from || (occurrence.start == occurrence.end && occurrence.start >= from));
                if (overlaps)
                    fetched.events.append(asEvent(calendar.info, event.uid, occurrence));
            }
        }
        if (!isWhole)
            damaged.append(name);
    }
    if (!damaged.isEmpty())
        fetched.unread.append(
            {.identifier = calendar.info.identifier, .reason = UnreadCalendar::Reason::DamagedFiles, .files = damaged});
}

FetchedEvents CalendarFolders::fetch(const QStringList &calendarIdentifiers, qint64 from, qint64 to,
                                     const CalendarMoment &moment)
{
    FetchedEvents fetched;
    for (const QString &identifier : QSet<QString>(calendarIdentifiers.cbegin(), calendarIdentifiers.cend())) {
        MirroredCalendar *calendar = calendarOf(identifier);
        if (!calendar || !calendar->isReadable)
            fetched.unread.append({.identifier = identifier, .reason = UnreadCalendar::Reason::Unreadable});
        else
            fetchFrom(*calendar, from, to, moment, fetched);
    }
    return fetched;
}

CalendarFolders::MirroredCalendar *CalendarFolders::calendarOf(const QString &identifier)
{
    if (!identifier.startsWith(m_identifierPrefix))
        return nullptr;
    const auto found = m_calendars.find(identifier.mid(m_identifierPrefix.size()));
    return found == m_calendars.end() ? nullptr : &found->second;
}

CalendarFolders::Address CalendarFolders::addressOf(const QString &eventIdentifier)
{
    if (!eventIdentifier.startsWith(m_identifierPrefix))
        return {};
    const QStringList pieces = eventIdentifier.mid(m_identifierPrefix.size()).split(u'/');
    if (pieces.size() != 2 && pieces.size() != 3)
        return {};
    return {.calendar = calendarOf(m_identifierPrefix + pieces.at(0)),
            .key = {.uid = QUrl::fromPercentEncoding(pieces.at(1).toUtf8()),
                    .original = pieces.size() == 3 ? pieces.at(2).toLatin1() : QByteArray()}};
}

std::optional<CalendarEvent> CalendarFolders::find(MirroredCalendar &calendar, const EventKey &key,
                                                   const CalendarMoment &moment)
{
    const QStringList names = calendar.filesByUid.value(key.uid);
    if (names.isEmpty())
        return std::nullopt;
    const PatchContext context{.user = moment.user, .zones = m_zones, .horizon = moment.horizon()};
    const auto occurrence = findOccurrence(calendar.files[names.constFirst()].events, key, context);
    return occurrence ? std::optional(asEvent(calendar.info, key.uid, *occurrence)) : std::nullopt;
}

Result<CalendarEvent> CalendarFolders::create(const NewEvent &event, const CalendarMoment &moment)
{
    MirroredCalendar *calendar = calendarOf(event.calendarIdentifier);
    const auto existing = [&]() -> std::optional<CalendarEvent> {
        for (auto &[name, each] : m_calendars) {
            const QStringList names = each.filesByUid.value(event.uid);
            const QList<FileEvent> events = names.isEmpty() ? QList<FileEvent>() : each.files[names[0]].events;
            for (FileEvent found : events) {
                if (found.uid != event.uid || !found.expand(moment.horizon()))
                    continue;
                const std::vector<EventOccurrence> all = found.occurrences(moment.user);
                if (!all.empty())
                    return asEvent(each.info, event.uid, all.front());
            }
        }
        return std::nullopt;
    };
    if (const auto found = existing())
        return *found;
    const std::optional<QByteArray> text = newEventText(event, moment.now);
    if (!calendar || !calendar->info.isWritable || !text || event.uid.isEmpty())
        return Error{ErrorCode::CalendarWriteFailed, calendar ? calendar->path : QString()};
    const QString name = fileNameFor(event.uid);
    const QString path = calendar->path + u'/' + name;
    if (!replaceFile(path, *text, [&] { return !QFileInfo::exists(path); })) {
        // Perhaps another program made it just now.
        readEvents(*calendar);
        if (const auto found = existing())
            return *found;
        return Error{ErrorCode::CalendarWriteFailed, path};
    }
    mirrorText(*calendar, name, stateOf(path).value_or(FileState()), *text);
    const auto created = find(*calendar, {.uid = event.uid}, moment);
    return created ? Result<CalendarEvent>(*created) : Error{ErrorCode::CalendarWriteFailed, path};
}

Result<void> CalendarFolders::rewriteFile(MirroredCalendar &calendar, const QString &name, const PatchContext &context,
                                          const Patch &patch)
{
    const QString path = calendar.path + u'/' + name;
    const LocalFileSystem files;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::optional<QByteArray> text = files.read(path);
        if (!text)
            return Error{ErrorCode::CalendarEventMissing};
        const Result<QByteArray> patched = patch(*text, context);
        if (!patched)
            return patched.error();
        if (!calendar.info.isWritable)
            return Error{ErrorCode::CalendarWriteFailed, calendar.path};
        const auto isStillSo = [&] { return files.read(path) == text; };
        if (patched.value().isEmpty()) {
            if (!isStillSo())
                continue;
            if (!QFile::remove(path))
                return Error{ErrorCode::CalendarWriteFailed, path};
            forget(calendar, name);
            return {};
        }
        bool wasOvertaken = false;
        if (patched.value() == *text ||
            replaceFile(path, patched.value(), [&] { return !(wasOvertaken = !isStillSo()); })) {
            mirrorText(calendar, name, stateOf(path).value_or(FileState()), patched.value());
            return {};
        }
        if (!wasOvertaken)
            break;
    }
    return Error{ErrorCode::CalendarWriteFailed, path};
}

Result<void> CalendarFolders::rewrite(const Address &address, const CalendarMoment &moment, const Patch &patch)
{
    const Error missing{ErrorCode::CalendarEventMissing};
    if (!address.calendar)
        return missing;
    // A second time where the mirror was not up to date.
    for (const bool isFresh : {false, true}) {
        if (isFresh)
            readEvents(*address.calendar);
        const QStringList names = address.calendar->filesByUid.value(address.key.uid);
        if (names.isEmpty())
            continue;
        const PatchContext context{.user = moment.user,
                                   .zones = m_zones,
                                   .now = moment.now,
                                   .horizon = moment.horizon(),
                                   .fileName = names.constFirst()};
        const Result<void> result = rewriteFile(*address.calendar, names.constFirst(), context, patch);
        if (result || result.error().code != missing.code)
            return result;
    }
    return missing;
}

Result<CalendarEvent> CalendarFolders::change(const QString &eventIdentifier, const EventChange &change,
                                              const CalendarMoment &moment)
{
    const Address address = addressOf(eventIdentifier);
    const Result<void> written = rewrite(address, moment, [&](const QByteArray &text, const PatchContext &context) {
        return textWithChange(text, address.key, change, context);
    });
    if (!written)
        return written.error();
    const auto changed = find(*address.calendar, address.key, moment);
    return changed ? Result<CalendarEvent>(*changed) : Error{ErrorCode::CalendarEventMissing};
}

Result<void> CalendarFolders::remove(const QString &eventIdentifier, const CalendarMoment &moment)
{
    const Address address = addressOf(eventIdentifier);
    return rewrite(address, moment, [&](const QByteArray &text, const PatchContext &context) {
        return textWithoutEvent(text, address.key, context);
    });
}

} // namespace tessaly

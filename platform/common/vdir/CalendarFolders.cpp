#include "platform/common/vdir/CalendarFolders.h"

#include "platform/common/LocalFileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

namespace tessaly {

namespace {

constexpr int mostAttempts = 20;
const QString extension = QStringLiteral(".ics");
const QString firstFolder = QStringLiteral("personal");

QString fileNameFor(const QString &uid)
{
    const QString name = QString::fromLatin1(QUrl::toPercentEncoding(uid));
    constexpr qsizetype longestName = 120;
    if (name.isEmpty() || name.startsWith(u'.') || name.size() > longestName)
        return QStringLiteral("event-%1").arg(qHash(uid), 0, 16) + extension;
    return name + extension;
}

} // namespace

CalendarFolders::CalendarFolders(const QString &directory, const QString &identifierPrefix, const QString &accountTitle,
                                 FolderWork &work)
    : m_directory(directory), m_identifierPrefix(identifierPrefix), m_accountTitle(accountTitle), m_work(work)
{
}

bool CalendarFolders::readCalendars()
{
    const std::optional<QList<QByteArray>> names = entriesOf(m_directory);
    std::map<QString, CalendarFolder> former = std::exchange(m_calendars, {});
    for (const QByteArray &encodedName : names.value_or(QList<QByteArray>())) {
        const QString name = QFile::decodeName(encodedName);
        const QString path = m_directory + u'/' + name;
        if (name.startsWith(u'.') || !QFileInfo(path).isDir())
            continue;
        m_calendars.insert(former.extract(name));
        CalendarFolder &calendar = m_calendars.try_emplace(name, path, m_zones, m_work).first->second;
        calendar.readInfo(m_identifierPrefix + name, m_accountTitle);
    }
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
            result.prepend(calendar.info());
        else
            result.append(calendar.info());
    }
    return result;
}

QStringList CalendarFolders::folders() const
{
    QStringList result{m_directory};
    for (const auto &[name, calendar] : m_calendars)
        result.append(calendar.path());
    return result;
}

bool CalendarFolders::readEvents()
{
    m_work.eventsRead = 0;
    const QList<EventCalendar> before = calendars();
    readCalendars();
    bool hasChanged = calendars() != before;
    for (auto &[name, calendar] : m_calendars)
        hasChanged |= calendar.readEvents();
    return hasChanged;
}

FetchedEvents CalendarFolders::fetch(const QStringList &calendarIdentifiers, qint64 from, qint64 to,
                                     const CalendarMoment &moment)
{
    FetchedEvents fetched;
    for (const QString &identifier : QSet<QString>(calendarIdentifiers.cbegin(), calendarIdentifiers.cend())) {
        CalendarFolder *calendar = calendarOf(identifier);
        if (!calendar || !calendar->isReadable())
            fetched.unread.append({.identifier = identifier, .reason = UnreadCalendar::Reason::Unreadable});
        else
            calendar->fetch(from, to, moment, fetched);
    }
    return fetched;
}

CalendarFolder *CalendarFolders::calendarOf(const QString &identifier)
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

std::optional<CalendarEvent> CalendarFolders::findFirst(const QString &uid, const CalendarMoment &moment)
{
    for (auto &[name, calendar] : m_calendars) {
        if (const std::optional<CalendarEvent> found = calendar.findFirst(uid, moment))
            return found;
    }
    return std::nullopt;
}

Result<CalendarEvent> CalendarFolders::create(const NewEvent &event, const CalendarMoment &moment)
{
    if (const auto found = findFirst(event.uid, moment))
        return *found;
    CalendarFolder *calendar = calendarOf(event.calendarIdentifier);
    const std::optional<QByteArray> text = newEventText(event, moment.now);
    if (!calendar || !calendar->info().isWritable || !text || event.uid.isEmpty())
        return Error{ErrorCode::CalendarWriteFailed, calendar ? calendar->path() : QString()};
    const QString name = fileNameFor(event.uid);
    const QString path = calendar->path() + u'/' + name;
    if (!replaceEvent(path, *text, [&] { return !QFileInfo::exists(path); })) {
        // Perhaps another program made it just now.
        calendar->readEvents();
        if (const auto found = findFirst(event.uid, moment))
            return *found;
        return Error{ErrorCode::CalendarWriteFailed, path};
    }
    calendar->mirrorWritten(name, *text);
    const auto created = calendar->find({.uid = event.uid}, moment);
    return created ? Result<CalendarEvent>(*created) : Error{ErrorCode::CalendarWriteFailed, path};
}

Result<void> CalendarFolders::rewriteFile(CalendarFolder &calendar, const QString &name, const PatchContext &context,
                                          const Patch &patch)
{
    const QString path = calendar.path() + u'/' + name;
    const LocalFileSystem files;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::optional<QByteArray> text = files.read(path);
        if (!text)
            return Error{ErrorCode::CalendarEventMissing};
        const Result<QByteArray> patched = patch(*text, context);
        if (!patched)
            return patched.error();
        if (!calendar.info().isWritable)
            return Error{ErrorCode::CalendarWriteFailed, calendar.path()};
        const auto isStillSo = [&] { return files.read(path) == text; };
        if (patched.value().isEmpty()) {
            if (!isStillSo())
                continue;
            if (!QFile::remove(path))
                return Error{ErrorCode::CalendarWriteFailed, path};
            calendar.forget(name);
            return {};
        }
        bool wasOvertaken = false;
        if (patched.value() == *text ||
            replaceEvent(path, patched.value(), [&] { return !(wasOvertaken = !isStillSo()); })) {
            calendar.mirrorWritten(name, patched.value());
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
            address.calendar->readEvents();
        const std::optional<QString> name = address.calendar->fileWith(address.key.uid);
        if (!name)
            continue;
        const PatchContext context{
            .user = moment.user, .zones = m_zones, .now = moment.now, .horizon = moment.horizon(), .fileName = *name};
        const Result<void> result = rewriteFile(*address.calendar, *name, context, patch);
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
    const auto changed = address.calendar->find(address.key, moment);
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

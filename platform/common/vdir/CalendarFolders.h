#pragma once

#include "platform/common/vdir/EventPatch.h"
#include "platform/EventStore.h"

#include <QHash>

#include <atomic>
#include <map>

namespace tessaly {

/// When and where something is asked.
struct CalendarMoment
{
    UserCalendar user;
    /// Seconds since 1970-01-01 UTC.
    qint64 now = 0;

    /// Ten years after now.
    [[nodiscard]] qint64 horizon() const;
};

/// A folder of calendars in the vdir layout: a folder each, with a file for each event and its overrides, and the files
/// "displayname" and "color". What stands in the files is mirrored here. For one thread, and it blocks.
class CalendarFolders
{
public:
    /// A file that is larger is not read.
    static constexpr qint64 largestFile = qint64{16} << 20;

    /// The identifier of a calendar is the prefix and the name of its folder. Long work ends when `isEnding` is set.
    CalendarFolders(const QString &directory, const QString &identifierPrefix, const QString &accountTitle,
                    const std::atomic_bool &isEnding);

    /// False where the directory cannot be listed.
    bool readCalendars();
    /// Makes a calendar where there is none. False where that fails.
    bool makeFirstCalendar(const QString &title);
    [[nodiscard]] QList<EventCalendar> calendars() const;
    [[nodiscard]] QStringList folders() const;

    /// Compares every file with the mirror and reads those that differ. True where something has changed.
    bool readEvents();
    [[nodiscard]] FetchedEvents fetch(const QStringList &calendarIdentifiers, qint64 from, qint64 to,
                                      const CalendarMoment &moment);
    [[nodiscard]] Result<CalendarEvent> create(const NewEvent &event, const CalendarMoment &moment);
    [[nodiscard]] Result<CalendarEvent> change(const QString &eventIdentifier, const EventChange &change,
                                               const CalendarMoment &moment);
    [[nodiscard]] Result<void> remove(const QString &eventIdentifier, const CalendarMoment &moment);

private:
    /// How a file looks from outside; an equal state means equal contents, once some time has passed.
    struct FileState
    {
        qint64 size = 0;
        qint64 modified = 0;
        qint64 changed = 0;
        quint64 node = 0;
        bool operator==(const FileState &) const = default;
    };
    struct MirroredFile
    {
        FileState state = {};
        /// Another change within the grain of the file system's clock would not show.
        bool isSettled = false;
        size_t hash = 0;
        bool isDamaged = false;
        QList<FileEvent> events = {};
    };
    struct MirroredCalendar
    {
        EventCalendar info = {};
        QString path = {};
        bool isReadable = true;
        std::map<QString, MirroredFile> files = {};
        /// Names of the files with an event of this UID, in order; only the first counts.
        QHash<QString, QStringList> filesByUid = {};
    };
    /// An event identifier taken apart.
    struct Address
    {
        MirroredCalendar *calendar = nullptr;
        EventKey key = {};
    };

    [[nodiscard]] EventCalendar infoOf(const QString &folder) const;
    bool readEvents(MirroredCalendar &calendar);
    /// False where the mirror had it so already.
    bool mirrorFile(MirroredCalendar &calendar, const QString &name, const FileState &state);
    bool mirrorText(MirroredCalendar &calendar, const QString &name, const FileState &state,
                    const std::optional<QByteArray> &text);
    static void forget(MirroredCalendar &calendar, const QString &name);
    [[nodiscard]] static std::optional<FileState> stateOf(const QString &path);
    void fetchFrom(MirroredCalendar &calendar, qint64 from, qint64 to, const CalendarMoment &moment,
                   FetchedEvents &fetched);
    [[nodiscard]] MirroredCalendar *calendarOf(const QString &identifier);
    [[nodiscard]] Address addressOf(const QString &eventIdentifier);
    [[nodiscard]] std::optional<CalendarEvent> find(MirroredCalendar &calendar, const EventKey &key,
                                                    const CalendarMoment &moment);
    using Patch = std::function<Result<QByteArray>(const QByteArray &, const PatchContext &)>;
    /// Rewrites the file of an event; what another program writes meanwhile is patched in its turn.
    [[nodiscard]] Result<void> rewrite(const Address &address, const CalendarMoment &moment, const Patch &patch);
    [[nodiscard]] Result<void> rewriteFile(MirroredCalendar &calendar, const QString &name, const PatchContext &context,
                                           const Patch &patch);

    QString m_directory;
    QString m_identifierPrefix;
    QString m_accountTitle;
    const std::atomic_bool &m_isEnding;
    /// By the name of the folder.
    std::map<QString, MirroredCalendar> m_calendars;
    EventZones m_zones;
};

} // namespace tessaly

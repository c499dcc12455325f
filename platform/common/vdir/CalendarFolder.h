#pragma once

#include "platform/common/vdir/EventPatch.h"
#include "platform/common/vdir/FolderWork.h"
#include "platform/EventStore.h"

#include <QHash>

#include <functional>
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

/// A calendar in the vdir layout: a folder with a file for each event and its overrides, and the files "displayname"
/// and "color". Keeps a mirror of the files. For one thread, and it blocks.
class CalendarFolder
{
public:
    /// A file that is larger is not read.
    static constexpr qint64 largestFile = qint64{16} << 20;

    /// Both references must outlive it. Long work ends when `work` is to end.
    CalendarFolder(const QString &path, EventZones &zones, FolderWork &work);

    /// Reads title and colour; the title is the folder's name where there is none.
    void readInfo(const QString &identifier, const QString &accountTitle);
    [[nodiscard]] const EventCalendar &info() const { return m_info; }
    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] bool isReadable() const { return m_isReadable; }

    /// Compares every file with the mirror and reads those that differ. True where something has changed.
    bool readEvents();
    /// Takes this text, which was just written, as that of the file.
    void mirrorWritten(const QString &fileName, const QByteArray &text);
    void forget(const QString &fileName);

    /// The file that counts for this UID; of several the first by name. Nothing where there is none.
    [[nodiscard]] std::optional<QString> fileWith(const QString &uid) const;
    [[nodiscard]] std::optional<CalendarEvent> find(const EventKey &key, const CalendarMoment &moment);
    /// The event, or its first occurrence.
    [[nodiscard]] std::optional<CalendarEvent> findFirst(const QString &uid, const CalendarMoment &moment);
    /// Adds the events that overlap [from, to), in seconds since 1970-01-01 UTC, and what could not be read.
    void fetch(qint64 from, qint64 to, const CalendarMoment &moment, FetchedEvents &fetched);

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

    /// False where the mirror had it so already.
    bool mirrorFile(const QString &name, const FileState &state);
    bool mirrorText(const QString &name, const FileState &state, const std::optional<QByteArray> &text);
    static void removeAbandoned(const QString &draft);
    [[nodiscard]] static std::optional<FileState> stateOf(const QString &path);

    QString m_path;
    EventZones &m_zones;
    FolderWork &m_work;
    EventCalendar m_info;
    bool m_isReadable = true;
    std::map<QString, MirroredFile> m_files;
    /// Names of the files with an event of this UID, in order; only the first counts.
    QHash<QString, QStringList> m_filesByUid;
};

/// The names in a folder; nothing where it cannot be listed to its end.
[[nodiscard]] std::optional<QList<QByteArray>> entriesOf(const QString &path);

/// Replaces the file of an event as replaceFile() does, under a hidden name until the last step, as the vdir layout has
/// it. What a planner that was killed leaves of that is removed later, when events are read.
[[nodiscard]] bool replaceEvent(const QString &path, const QByteArray &text, const std::function<bool()> &isWanted);

} // namespace tessaly

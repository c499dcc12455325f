#pragma once

#include "platform/common/vdir/CalendarFolder.h"

namespace tessaly {

/// The calendars of a directory, each in its CalendarFolder. For one thread, and it blocks.
class CalendarFolders
{
public:
    /// The identifier of a calendar is the prefix and the name of its folder. Long work ends when `work` is to end.
    CalendarFolders(const QString &directory, const QString &identifierPrefix, const QString &accountTitle,
                    FolderWork &work);
    Q_DISABLE_COPY_MOVE(CalendarFolders)
    ~CalendarFolders() = default;

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
    /// An event identifier taken apart.
    struct Address
    {
        CalendarFolder *calendar = nullptr;
        EventKey key = {};
    };

    [[nodiscard]] CalendarFolder *calendarOf(const QString &identifier);
    [[nodiscard]] Address addressOf(const QString &eventIdentifier);
    /// The event with this UID, or its first occurrence, in whichever calendar.
    [[nodiscard]] std::optional<CalendarEvent> findFirst(const QString &uid, const CalendarMoment &moment);
    using Patch = std::function<Result<QByteArray>(const QByteArray &, const PatchContext &)>;
    /// Rewrites the file of an event; what another program writes meanwhile is patched in its turn.
    [[nodiscard]] Result<void> rewrite(const Address &address, const CalendarMoment &moment, const Patch &patch);
    [[nodiscard]] static Result<void> rewriteFile(CalendarFolder &calendar, const QString &name,
                                                  const PatchContext &context, const Patch &patch);

    QString m_directory;
    QString m_identifierPrefix;
    QString m_accountTitle;
    FolderWork &m_work;
    EventZones m_zones;
    /// By the name of the folder.
    std::map<QString, CalendarFolder> m_calendars;
};

} // namespace tessaly

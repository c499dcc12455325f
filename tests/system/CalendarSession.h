#pragma once

#include "tests/system/PrivateBus.h"

#include <QString>

namespace tessaly {

/// A private session with the desktop's calendar service, which starts on demand, and with another program that uses
/// it. One per process, created before anything else connects to a bus.
class CalendarSession
{
public:
    CalendarSession();
    Q_DISABLE_COPY_MOVE(CalendarSession)

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }

    /// Answers the calendar's UID.
    QString addLocalCalendar(const QString &title);
    /// A collection on a CalDAV server on this machine; with a method of authentication ("none", "plain/password").
    QString addServerCalendar(const QString &title, int port, const QString &path, const QString &method);
    /// Disables it, so that no program is offered it any more.
    void hideCalendar(const QString &uid);
    void removeCalendar(const QString &uid);
    void setDefaultCalendar(const QString &uid);

    /// Creates the event or puts it in the place of that with the same UID, overrides by their RECURRENCE-ID.
    void putEvent(const QString &calendarUid, const QByteArray &vevent);
    void dropEvent(const QString &calendarUid, const QString &uid);
    /// All components of the event as the service has them.
    [[nodiscard]] QByteArrayList eventTexts(const QString &calendarUid, const QString &uid);
    /// Has the service look at the server now.
    void refresh(const QString &calendarUid);
    /// Answers the service's question for a password once it comes.
    void answerPassword(const QString &calendarUid, const QString &password);
    /// The file that the service keeps a local calendar in. It writes there some time after it has answered.
    [[nodiscard]] QByteArray fileOfLocalCalendar(const QString &calendarUid) const;
    /// Ends the process that has this name on the bus, as a crash would.
    void kill(const QString &busName);
    /// The desktop's bus goes away for good.
    void endBus() { m_bus.kill(); }

private:
    QByteArrayList send(const QByteArray &command, const QByteArrayList &fields);

    QTemporaryDir m_directory;
    Service m_bus;
    Service m_peer;
};

} // namespace tessaly

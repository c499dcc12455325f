#include "tests/system/CalendarSession.h"

#include <QDBusConnection>
#include <QDBusReply>
#include <QDir>

#include <csignal>

namespace tessaly {

CalendarSession::CalendarSession()
{
    const std::pair<const char *, const char *> folders[] = {{"HOME", "home"},
                                                             {"XDG_CONFIG_HOME", "config"},
                                                             {"XDG_DATA_HOME", "data"},
                                                             {"XDG_CACHE_HOME", "cache"},
                                                             {"XDG_STATE_HOME", "state"},
                                                             {"XDG_RUNTIME_DIR", "run"}};
    for (const auto &[variable, folder] : folders) {
        QDir(m_directory.path()).mkpath(QString::fromLatin1(folder));
        qputenv(variable, QFile::encodeName(m_directory.filePath(QString::fromLatin1(folder))));
    }
    QFile::setPermissions(m_directory.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("GIO_USE_VFS", "local");
    qputenv("NO_AT_BRIDGE", "1");
    m_bus.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--print-address"), QStringLiteral("--nofork"),
                 QStringLiteral("--address=unix:dir=") + m_directory.filePath(QStringLiteral("run"))});
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.firstLine().toLatin1());
    m_peer.showErrors();
    m_peer.start(QStringLiteral(CALENDAR_PEER_PROGRAM), {});
}

QByteArrayList CalendarSession::send(const QByteArray &command, const QByteArrayList &fields)
{
    QByteArrayList line{command};
    for (const QByteArray &field : fields)
        line.append(field.toPercentEncoding());
    QByteArrayList answer = m_peer.ask(line.join(' ')).split(' ');
    if (answer.takeFirst() != "ok")
        qFatal("the other program failed to %s", command.constData());
    for (QByteArray &field : answer)
        field = QByteArray::fromPercentEncoding(field);
    return answer;
}

QString CalendarSession::addLocalCalendar(const QString &title)
{
    return QString::fromUtf8(send("add-local", {title.toUtf8()}).value(0));
}

QString CalendarSession::addServerCalendar(const QString &title, int port, const QString &path, const QString &method)
{
    return QString::fromUtf8(
        send("add-server", {title.toUtf8(), QByteArray::number(port), path.toUtf8(), method.toUtf8()}).value(0));
}

void CalendarSession::hideCalendar(const QString &uid)
{
    send("hide", {uid.toUtf8()});
}

void CalendarSession::removeCalendar(const QString &uid)
{
    send("remove", {uid.toUtf8()});
}

void CalendarSession::setDefaultCalendar(const QString &uid)
{
    send("default", {uid.toUtf8()});
}

void CalendarSession::putEvent(const QString &calendarUid, const QByteArray &vevent)
{
    send("put", {calendarUid.toUtf8(), vevent});
}

void CalendarSession::dropEvent(const QString &calendarUid, const QString &uid)
{
    send("drop", {calendarUid.toUtf8(), uid.toUtf8()});
}

QByteArrayList CalendarSession::eventTexts(const QString &calendarUid, const QString &uid)
{
    return send("texts", {calendarUid.toUtf8(), uid.toUtf8()});
}

void CalendarSession::refresh(const QString &calendarUid)
{
    send("refresh", {calendarUid.toUtf8()});
}

void CalendarSession::answerPassword(const QString &calendarUid, const QString &password)
{
    send("password", {calendarUid.toUtf8(), password.toUtf8()});
}

QByteArray CalendarSession::fileOfLocalCalendar(const QString &calendarUid) const
{
    QFile file(path(QStringLiteral("data/evolution/calendar/%1/calendar.ics").arg(calendarUid)));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void CalendarSession::kill(const QString &busName)
{
    const QDBusReply<uint> pid = QDBusConnection::sessionBus().interface()->servicePid(busName);
    if (!pid.isValid())
        qFatal("%s has no process", qPrintable(busName));
    ::kill(static_cast<pid_t>(pid.value()), SIGKILL);
}

} // namespace tessaly

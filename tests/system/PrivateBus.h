#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

namespace tessaly {

/// A process that ends with the test.
class Service
{
public:
    Service() = default;
    ~Service() { stop(); }
    Q_DISABLE_COPY_MOVE(Service)

    void start(const QString &program, const QStringList &arguments,
               const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
    {
        m_process.setProcessEnvironment(environment);
        if (m_process.processChannelMode() != QProcess::ForwardedErrorChannel)
            m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments);
    }
    /// Empty when it says nothing in ten seconds.
    [[nodiscard]] QString firstLine() { return QString::fromUtf8(nextLine()); }
    /// What it says of errors is shown beside what the test says. To be called before start().
    void showErrors() { m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel); }
    /// The line that it answers one with; empty when it says nothing in a minute.
    [[nodiscard]] QByteArray ask(const QByteArray &line)
    {
        m_process.write(line + '\n');
        return nextLine(60'000);
    }
    /// Ends it in the middle of whatever it does.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished(5000);
    }

private:
    [[nodiscard]] QByteArray nextLine(int milliseconds = 10'000)
    {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(milliseconds)) {
        }
        return m_process.readLine().trimmed();
    }

    QProcess m_process;
};

/// A private session bus without any services but those that the test offers on it.
class PrivateBus
{
public:
    PrivateBus()
    {
        QFile config(m_directory.filePath(QStringLiteral("bus.conf")));
        (void)config.open(QIODevice::WriteOnly);
        config.write("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context=\"default\">"
                     "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                     "</policy></busconfig>");
        config.close();
        m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + config.fileName(),
                                                       QStringLiteral("--print-address"), QStringLiteral("--nofork")});
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_daemon.firstLine());
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_directory.path());
    }
    ~PrivateBus()
    {
        for (const QString &name : m_names)
            QDBusConnection::disconnectFromBus(name);
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// One connection for each name.
    [[nodiscard]] QDBusConnection connection(const QString &name)
    {
        m_names.insert(name);
        return QDBusConnection::connectToBus(m_environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")), name);
    }
    [[nodiscard]] bool hasService(const QString &service)
    {
        return connection(QStringLiteral("onlooker")).interface()->isServiceRegistered(service);
    }
    /// For processes that shall find this bus, and no configuration of the user's.
    [[nodiscard]] const QProcessEnvironment &environment() const { return m_environment; }

private:
    QTemporaryDir m_directory;
    Service m_daemon;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QSet<QString> m_names;
};

} // namespace tessaly

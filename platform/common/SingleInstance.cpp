#include "platform/common/SingleInstance.h"

#include "platform/common/LocalFileSystem.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QPointer>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>

namespace tessaly {

namespace {

/// Longer than a start takes on a slow and busy machine: a planner that is starting listens, but answers only
/// afterwards.
constexpr int answerLimitMs = 10'000;
constexpr int retryMs = 50;
constexpr qsizetype longestWish = 1024;
constexpr qsizetype longestLine = 65'536;
const QByteArray show("show ");
const QByteArray stay("stay");
const QByteArray run("run ");
/// Ends the answer to a command; without it the other process did not come to its end.
const QByteArray endOfAnswer("\nend\n");

/// In the runtime directory, since the data directory's path may be longer than a socket's path can be. Where the
/// system offers none that is safe from other users, a path that fits has to do.
QString serverNameFor(const QString &directory)
{
    const QByteArray hash = QCryptographicHash::hash(directory.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return (runtime.isEmpty() ? directory : runtime) + QLatin1String("/tessaly-") + QString::fromLatin1(hash);
}

/// Without links and dots; as given where there is no such directory.
QString canonicalDirectory(const QString &directory)
{
    return makePrivateFolder(directory) ? QFileInfo(directory).canonicalFilePath() : directory;
}

} // namespace

SingleInstance::SingleInstance(const QString &directory, QObject *parent)
    : QObject(parent), m_directory(canonicalDirectory(directory)), m_serverName(serverNameFor(m_directory)),
      m_lock(m_directory + QLatin1String("/tessaly.lock"))
{
    // A lock is stale when its process is gone, never because it is old.
    m_lock.setStaleLockTime(0);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::answer);
}

SingleInstance::~SingleInstance() = default;

Result<SingleInstance::Role> SingleInstance::claim(const Wish &wish)
{
    const QByteArray line = wish.isWindowWanted ? (show + wish.activationToken).left(longestWish) : stay;
    const auto isDone = [](QLocalSocket &socket) {
        return socket.waitForReadyRead(answerLimitMs) && socket.readAll().startsWith("done");
    };
    Result<Role> role = lockOrAsk([&] { return askFirst(line, isDone); });
    if (role && role.value() == Role::First)
        listen();
    return role;
}

Result<std::optional<QByteArray>> SingleInstance::deliver(const QByteArray &command)
{
    QByteArray answer;
    const auto readAnswer = [&answer](QLocalSocket &socket) {
        while (socket.state() == QLocalSocket::ConnectedState)
            socket.waitForReadyRead(-1);
        answer = socket.readAll();
        return true;
    };
    const Result<Role> role = lockOrAsk([&] { return askFirst(run + command, readAnswer); });
    if (!role)
        return role.error();
    if (role.value() == Role::First)
        return std::optional<QByteArray>();
    if (!answer.endsWith(endOfAnswer))
        return Error{ErrorCode::StorageLocked, {}};
    answer.chop(endOfAnswer.size());
    return std::optional(answer);
}

Result<SingleInstance::Role> SingleInstance::lockOrAsk(const std::function<bool()> &ask)
{
    const QDeadlineTimer deadline(answerLimitMs);
    while (true) {
        if (m_lock.tryLock(0))
            return Role::First;
        if (m_lock.error() != QLockFile::LockFailedError)
            return Error{isDiskFull(m_directory) ? ErrorCode::StorageFull : ErrorCode::StorageUnwritable, {}};
        if (ask())
            return Role::Second;
        // The first process may be about to start listening, or about to end.
        if (deadline.hasExpired())
            return Error{ErrorCode::StorageLocked, {}};
        QThread::msleep(retryMs);
    }
}

void SingleInstance::listen()
{
    // The lock is ours, so a socket of that name is what a killed process left behind.
    QLocalServer::removeServer(m_serverName);
    if (!m_server.listen(m_serverName))
        qWarning("Cannot listen for later starts: %s", qUtf8Printable(m_server.errorString()));
}

void SingleInstance::answer()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            if (socket->canReadLine())
                obey(socket->readLine(longestLine).trimmed(), socket);
            else if (socket->bytesAvailable() > longestLine)
                socket->abort();
        };
        connect(socket, &QLocalSocket::readyRead, socket, read);
        read();
    }
}

void SingleInstance::obey(const QByteArray &line, QLocalSocket *socket)
{
    if (line.startsWith(run)) {
        emit commandRequested(line.sliced(run.size()), [asker = QPointer(socket)](const QByteArray &answer) {
            if (!asker)
                return;
            asker->write(answer + endOfAnswer);
            asker->disconnectFromServer();
        });
        return;
    }
    if (m_endsWithActivation && line != stay)
        m_server.close();
    socket->write("done\n");
    socket->flush();
    socket->disconnectFromServer();
    if (line == stay)
        emit residenceRequested();
    else
        emit activationRequested(line.sliced(std::min(show.size(), line.size())));
}

bool SingleInstance::askFirst(const QByteArray &line, const std::function<bool(QLocalSocket &)> &listenTo) const
{
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    if (!socket.waitForConnected(answerLimitMs))
        return false;
    socket.write(line + '\n');
    return listenTo(socket);
}

} // namespace tessaly

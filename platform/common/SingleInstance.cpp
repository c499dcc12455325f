#include "platform/common/SingleInstance.h"

#include "platform/common/LocalFileSystem.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>

namespace tessaly {

namespace {

/// Longer than a start takes on a slow and busy machine: a planner that is starting listens, but answers only
/// afterwards.
constexpr int answerLimitMs = 10'000;
constexpr int retryMs = 50;
constexpr qsizetype longestLine = 1024;
const QByteArray show("show ");
const QByteArray stay("stay");

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
    const QDeadlineTimer deadline(answerLimitMs);
    while (true) {
        if (m_lock.tryLock(0)) {
            listen();
            return Role::First;
        }
        if (m_lock.error() != QLockFile::LockFailedError)
            return Error{isDiskFull(m_directory) ? ErrorCode::StorageFull : ErrorCode::StorageUnwritable, {}};
        if (askFirst(wish))
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
            if (!socket->canReadLine()) {
                if (socket->bytesAvailable() > longestLine)
                    socket->abort();
                return;
            }
            const QByteArray line = socket->readLine(longestLine).trimmed();
            socket->write("done\n");
            socket->disconnectFromServer();
            obey(line);
        };
        connect(socket, &QLocalSocket::readyRead, socket, read);
        read();
    }
}

void SingleInstance::obey(const QByteArray &line)
{
    if (line == stay)
        emit residenceRequested();
    else
        emit activationRequested(line.sliced(std::min(show.size(), line.size())));
}

bool SingleInstance::askFirst(const Wish &wish) const
{
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    if (!socket.waitForConnected(answerLimitMs))
        return false;
    const QByteArray line = wish.isWindowWanted ? show + wish.activationToken : stay;
    socket.write(line.left(longestLine - 1) + '\n');
    return socket.waitForReadyRead(answerLimitMs) && socket.readAll().startsWith("done");
}

} // namespace tessaly

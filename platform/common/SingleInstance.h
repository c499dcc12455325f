#pragma once

#include "model/Result.h"

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QLocalSocket;

namespace tessaly {

/// Ensures that only one process works on a data directory. A second process passes its wish to the first one.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Role {
        /// This process holds the directory, until it ends.
        First,
        /// Another process holds it and has received the wish.
        Second,
    };

    /// What a second process was started for.
    struct Wish
    {
        /// Otherwise the planner only stays in the background; what the first process shows does not change.
        bool isWindowWanted = true;
        /// What the launcher gave this process so that a window may come to the front; may be empty.
        QByteArray activationToken = {};
    };

    /// Makes `directory` where there is none, for its owner alone. Different paths to the same directory are the same.
    explicit SingleInstance(const QString &directory, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// Fails with StorageUnwritable where the directory cannot be locked, and with StorageLocked where another process
    /// holds the directory but does not answer within ten seconds. The lock of a killed process is taken over.
    [[nodiscard]] Result<Role> claim(const Wish &wish);

    /// Takes over the lock that this process held when it ran another program. To be called before claim().
    void inheritLock() { m_lock.removeStaleLockFile(); }
    /// From the next activation on, later starts wait until a program that has inherited the lock listens.
    void setEndsWithActivation() { m_endsWithActivation = true; }

    /// Has the process that holds the directory carry out a command and waits for its answer, however long that takes.
    /// Nothing where no process held the directory: now this one does, without listening. Fails as claim() does, and
    /// with StorageLocked where the other process ends, or is of a version that knows no commands. The command is one
    /// line of at most 60 KB.
    [[nodiscard]] Result<std::optional<QByteArray>> deliver(const QByteArray &command);

    /// Sends the answer to a command.
    using Reply = std::function<void(const QByteArray &answer)>;

signals:
    /// Another process was started on the same directory, to show its window.
    void activationRequested(const QByteArray &activationToken);
    /// Another process was started on the same directory, to stay in the background.
    void residenceRequested();
    /// Another process passes a command on and waits for the reply, which may come later.
    void commandRequested(const QByteArray &command, const tessaly::SingleInstance::Reply &reply);

private:
    /// Locks the directory, or has `ask` speak to the process that holds it until that succeeds.
    [[nodiscard]] Result<Role> lockOrAsk(const std::function<bool()> &ask);
    void listen();
    void answer();
    void obey(const QByteArray &line, QLocalSocket *socket);
    [[nodiscard]] bool askFirst(const QByteArray &line, const std::function<bool(QLocalSocket &)> &listenTo) const;

    QString m_directory;
    QString m_serverName;
    QLockFile m_lock;
    QLocalServer m_server;
    bool m_endsWithActivation = false;
};

} // namespace tessaly

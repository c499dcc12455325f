#pragma once

#include "model/Result.h"

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <memory>

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

signals:
    /// Another process was started on the same directory, to show its window.
    void activationRequested(const QByteArray &activationToken);
    /// Another process was started on the same directory, to stay in the background.
    void residenceRequested();

private:
    void listen();
    void answer();
    void obey(const QByteArray &line);
    [[nodiscard]] bool askFirst(const Wish &wish) const;

    QString m_directory;
    QString m_serverName;
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace tessaly

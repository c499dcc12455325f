#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace tessaly {

/// Calls back when a file in one of some folders is made, written, replaced or removed; edits in place count
/// (inotify(7)). Lives in a thread with an event loop.
class FolderWatch
{
public:
    explicit FolderWatch(std::function<void()> callback);
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    /// From now on these folders. False where the system cannot watch all of them.
    bool setFolders(const QStringList &paths);

private:
    void readNotices();

    std::function<void()> m_callback;
    int m_handle;
    QHash<QString, int> m_watches;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tessaly

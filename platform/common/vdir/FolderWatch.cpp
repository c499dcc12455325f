#include "platform/common/vdir/FolderWatch.h"

#include <QFile>
#include <QSocketNotifier>

#include <array>

#include <sys/inotify.h>
#include <unistd.h>

namespace tessaly {

FolderWatch::FolderWatch(std::function<void()> callback)
    : m_callback(std::move(callback)), m_handle(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_handle < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_handle, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readNotices(); });
}

FolderWatch::~FolderWatch()
{
    m_notifier.reset();
    if (m_handle >= 0)
        ::close(m_handle);
}

bool FolderWatch::setFolders(const QStringList &paths)
{
    constexpr uint32_t notices = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_MODIFY |
                                 IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    // Watching a folder again gives the same number, or a new one where another folder has taken its place.
    QHash<QString, int> watches;
    bool isComplete = m_handle >= 0;
    for (const QString &path : paths) {
        const int watch = ::inotify_add_watch(m_handle, QFile::encodeName(path).constData(), notices);
        if (watch >= 0)
            watches.insert(path, watch);
        else
            isComplete = false;
    }
    const QList<int> kept = watches.values();
    for (const int former : std::as_const(m_watches)) {
        if (!kept.contains(former))
            ::inotify_rm_watch(m_handle, former);
    }
    m_watches = watches;
    return isComplete;
}

void FolderWatch::readNotices()
{
    std::array<char, 65536> notices;
    while (::read(m_handle, notices.data(), notices.size()) > 0) {
    }
    m_callback();
}

} // namespace tessaly

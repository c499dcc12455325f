#pragma once

#include "platform/Archives.h"

#include <QObject>
#include <QTimer>

namespace tessaly {

/// Refuses every archive, where nothing is on a disk.
class FakeArchives final : public Archives
{
public:
    void write(const QString &path, const QList<ArchiveEntry> &, Completion completion) override
    {
        refuse({ErrorCode::ArchiveUnwritable, path}, std::move(completion));
    }
    void extract(const QString &path, const QString &, Completion completion) override
    {
        refuse({ErrorCode::ArchiveUnreadable, path}, std::move(completion));
    }

private:
    void refuse(const Error &error, Completion completion)
    {
        QTimer::singleShot(0, &m_alive, [error, completion = std::move(completion)] { completion(error); });
    }

    QObject m_alive;
};

} // namespace tessaly

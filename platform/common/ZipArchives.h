#pragma once

#include "platform/Archives.h"

#include <QObject>
#include <QThreadPool>

namespace tessaly {

/// ZIP files by libzip, read and written in a thread. An archive passes through memory, so that it is written in one
/// step like every other file; more than 4 GB are refused.
class ZipArchives final : public Archives
{
public:
    ZipArchives();
    /// Waits for what has begun.
    ~ZipArchives() override;
    Q_DISABLE_COPY_MOVE(ZipArchives)

    void write(const QString &path, const QList<ArchiveEntry> &entries, Completion completion) override;
    void extract(const QString &path, const QString &folder, Completion completion) override;

private:
    void run(std::function<Result<void>()> work, Completion completion);

    QThreadPool m_pool;
    QObject m_receiver;
};

} // namespace tessaly

#include "bench/ProcessFigures.h"

#include <QFile>

#include <ctime>

namespace tessaly::bench {

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The value of a line such as "Pss:    1234 kB".
double bytesAt(const QByteArray &key, const QByteArray &text)
{
    for (const QByteArray &line : text.split('\n')) {
        if (line.startsWith(key))
            return line.sliced(key.size()).simplified().split(' ').constFirst().toDouble() * 1024;
    }
    return 0;
}

} // namespace

ProcessFigures figuresOf(qint64 process)
{
    const QString folder = QStringLiteral("/proc/%1").arg(process);
    ProcessFigures figures;
    // Threads that have ended count, too.
    clockid_t clock = {};
    timespec time = {};
    if (clock_getcpuclockid(pid_t(process), &clock) == 0 && clock_gettime(clock, &time) == 0)
        figures.cpuSeconds = double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
    const QByteArray status = contents(folder + QStringLiteral("/status"));
    figures.peakBytes = bytesAt("VmHWM:", status);
    figures.residentBytes = bytesAt("VmRSS:", status);
    figures.proportionalBytes = bytesAt("Pss:", contents(folder + QStringLiteral("/smaps_rollup")));
    return figures;
}

} // namespace tessaly::bench

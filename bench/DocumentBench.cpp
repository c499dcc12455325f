#include "bench/Bench.h"

#include <QHash>
#include <QProcess>

namespace tessaly {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 300'000;
constexpr double oneFrame = 1.0 / 60;

QProcessEnvironment environment()
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    variables.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
    variables.insert(u"QML_IMPORT_PATH"_s, QStringLiteral(BENCH_ENGINE_DIRECTORY));
    // Neither the user's services nor his data.
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    return variables;
}

} // namespace

TESSALY_BENCH(documents)
{
    QProcess worker;
    worker.setProcessEnvironment(environment());
    worker.setProcessChannelMode(QProcess::SeparateChannels);
    worker.start(QStringLiteral(BENCH_DOCUMENT_WORKER), {});
    if (!worker.waitForFinished(patience) || worker.exitCode() != 0)
        return report.failed(u"documents"_s, QString::fromUtf8(worker.readAllStandardError()).right(300));
    QHash<QByteArray, double> values;
    for (const QByteArray &line : worker.readAllStandardOutput().split('\n'))
        values.insert(line.split(' ').first(), line.split(' ').value(1).toDouble());

    const QString marked = u"marked alone, in the same page"_s;
    const QString frame = u"one frame"_s;
    report.shown(u"first document, the engine's start included"_s, values["first"], marked, values["marked-10k"]);
    report.atMostTimes(u"edit to preview, 10 KB"_s, values["edit-10k"], frame, oneFrame, 1);
    report.atMostTimes(u"edit to preview, 100 KB"_s, values["edit-100k"], marked, values["marked-100k"], 2);
    report.atMostTimes(u"edit to preview, 1 MB"_s, values["edit-1m"], marked, values["marked-1m"], 3);
    report.shown(u"the same in processor time, 10 KB"_s, values["edit-cpu-10k"], marked, values["marked-cpu-10k"]);
    report.shown(u"the same in processor time, 100 KB"_s, values["edit-cpu-100k"], marked, values["marked-cpu-100k"]);
    report.shown(u"the same in processor time, 1 MB"_s, values["edit-cpu-1m"], marked, values["marked-cpu-1m"]);
    report.shown(u"longest pause of the window meanwhile"_s, values["edit-pause-1m"], frame, oneFrame);
    report.shown(u"copy as rich text, 10 KB"_s, values["copy-10k"], marked, values["marked-10k"]);
    report.shown(u"copy as rich text, 100 KB"_s, values["copy-100k"], marked, values["marked-100k"]);
    report.shown(u"copy as rich text, 1 MB"_s, values["copy-1m"], marked, values["marked-1m"]);
    report.shownBytes(u"memory with the first document open"_s, values["memory-after"], u"before"_s,
                      values["memory-before"]);
}

} // namespace tessaly
